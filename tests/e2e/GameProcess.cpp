#include "e2e/GameProcess.h"
#include "support/TestBitmaps.h"

#include <filesystem>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace e2e
{

std::map<std::string, std::string> GameEnv(const std::map<std::string, std::string>& p_extra)
{
    std::map<std::string, std::string> env = p_extra;
    env.insert({{"KORVATH_HEADLESS", "1"},
                {"SDL_AUDIODRIVER", "dummy"},
                {"LIBGL_ALWAYS_SOFTWARE", "1"},
                {"ASAN_OPTIONS", "detect_leaks=0"}});
    return env;
}

ProcessResult RunGame(const std::string& p_workDir, const std::vector<std::string>& p_args,
                      const std::map<std::string, std::string>& p_env, int p_timeoutSeconds)
{
    ProcessResult result;
    const std::string errorFile = p_workDir + "/stderr.txt";
    const pid_t pid = fork();
    if (pid < 0)
    {
        return result;
    }
    if (pid == 0)
    {
        if (chdir(p_workDir.c_str()) != 0)
        {
            _exit(126);
        }
        const int fd = open(errorFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (fd >= 0)
        {
            dup2(fd, STDERR_FILENO);
            close(fd);
        }
        for (const auto& [name, value] : p_env)
        {
            setenv(name.c_str(), value.c_str(), 1);
        }
        std::vector<char*> argv;
        std::string binary = KORVATH_GAME_BINARY;
        argv.push_back(binary.data());
        std::vector<std::string> args = p_args;
        for (std::string& arg : args)
        {
            argv.push_back(arg.data());
        }
        argv.push_back(nullptr);
        execv(binary.c_str(), argv.data());
        _exit(127);
    }

    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(p_timeoutSeconds);
    int status = 0;
    for (;;)
    {
        const pid_t done = waitpid(pid, &status, WNOHANG);
        if (done == pid)
        {
            break;
        }
        if (std::chrono::steady_clock::now() > deadline)
        {
            kill(pid, SIGKILL);
            waitpid(pid, &status, 0);
            result.timedOut = true;
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    if (!result.timedOut && WIFEXITED(status))
    {
        result.exited = true;
        result.exitCode = WEXITSTATUS(status);
    }
    else if (WIFSIGNALED(status))
    {
        result.signal = WTERMSIG(status);
    }
    std::ifstream in(errorFile);
    std::stringstream text;
    text << in.rdbuf();
    result.standardError = text.str();
    return result;
}

bool BuildGameDirectory(const std::string& p_dir, std::string& p_command)
{
    p_command = std::string(KORVATH_ARTGEN_BINARY) + " '" + p_dir + "' --data '" KORVATH_DATA_DIR "' >/dev/null && " +
                KORVATH_FORGE_BINARY + " build '" KORVATH_DATA_DIR "' '" + p_dir + "' >/dev/null";
    return std::system(p_command.c_str()) == 0;
}

void GameDirTest::SetUp()
{
    m_dir = testsupport::MakeTempDir(m_tag);
    ASSERT_FALSE(m_dir.empty());
}

void GameDirTest::TearDown()
{
    std::error_code error;
    std::filesystem::remove_all(m_dir, error);
}

} // namespace e2e
