#pragma once

// Shared helpers for the benchmark programs: timing, medians, and the one
// output format "<name> <value> <unit>".
#include <benchmark/benchmark.h>

#include <QFile>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace bench {

inline void figure(const std::string &name, double value, const std::string &unit)
{
    std::printf("%s %.3f %s\n", name.c_str(), value, unit.c_str());
    std::fflush(stdout);
}

// Resident memory of process `pid` in MB (VmRSS), or -1 when it cannot be read.
inline double residentMb(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024.0;
    return -1;
}

inline double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

// Microseconds one call of `fn` takes.
template<typename F>
double timeUs(F &&fn)
{
    const auto start = std::chrono::steady_clock::now();
    fn();
    const auto end = std::chrono::steady_clock::now();
    return std::chrono::duration<double, std::micro>(end - start).count();
}

// Median microseconds of `samples` calls of `fn`.
template<typename F>
double medianUs(int samples, F &&fn)
{
    std::vector<double> times;
    times.reserve(size_t(samples));
    for (int i = 0; i < samples; ++i)
        times.push_back(timeUs(fn));
    return median(times);
}

// Runs the Google Benchmark micro-benchmarks registered in this program and
// returns, per benchmark name, the median of the repetitions' time per
// iteration in microseconds. Register with ->Repetitions(n).
class MedianReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context &) override { return true; }
    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const auto &run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") {
                const double perIteration = run.GetAdjustedRealTime(); // in run.time_unit
                medians.emplace_back(run.run_name.function_name,
                                     perIteration * 1e6 / benchmark::GetTimeUnitMultiplier(run.time_unit));
            }
        }
    }
    std::vector<std::pair<std::string, double>> medians;
};

inline std::vector<std::pair<std::string, double>> runMicroBenchmarks(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return reporter.medians;
}

} // namespace bench
