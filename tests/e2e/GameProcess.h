#pragma once

#include <map>
#include <string>
#include <vector>

namespace e2e
{

struct ProcessResult
{
    bool exited = false;   // ended by itself (not by a signal or the time limit)
    int exitCode = -1;
    int signal = 0;
    bool timedOut = false;
    std::string standardError;
};

// Runs the real game binary in p_workDir with extra environment variables, waiting at most
// p_timeoutSeconds.
ProcessResult RunGame(const std::string& p_workDir, const std::vector<std::string>& p_args,
                      const std::map<std::string, std::string>& p_env, int p_timeoutSeconds);

} // namespace e2e
