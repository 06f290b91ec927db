#pragma once

// The benchmark programs' reporter: every report goes on to the display that
// --benchmark_format chose (console, JSON or CSV, on standard output; --benchmark_out still
// gets its own file), and the runs are kept so that each program can print its own summary
// afterwards, on standard error, where it cannot spoil the JSON a tool reads.

#include <benchmark/benchmark.h>

#include <vector>

namespace bench
{

class RecordingReporter : public benchmark::BenchmarkReporter
{
public:
    // The library keeps the display reporter for the whole run.
    RecordingReporter() : m_pDisplay(benchmark::CreateDefaultDisplayReporter()) {}

    bool ReportContext(const Context& p_context) override { return m_pDisplay->ReportContext(p_context); }

    void ReportRuns(const std::vector<Run>& p_runs) override
    {
        m_runs.insert(m_runs.end(), p_runs.begin(), p_runs.end());
        m_pDisplay->ReportRuns(p_runs);
    }

    void Finalize() override { m_pDisplay->Finalize(); }

    // Every run reported, aggregates included, in order.
    const std::vector<Run>& GetRuns() const { return m_runs; }

private:
    benchmark::BenchmarkReporter* m_pDisplay;
    std::vector<Run> m_runs;
};

// 60 Hz: the share of a frame is how figures are quoted.
inline constexpr double FRAME_BUDGET_MS = 1000.0 / 60.0;

} // namespace bench
