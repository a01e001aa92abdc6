#pragma once
// A console reporter that also keeps each benchmark's real time per iteration, so the main can
// print the ratios between an engine benchmark and its hand-written SQLite baseline.
#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace tr::bench {

class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;
    // Real time per iteration in nanoseconds, by benchmark name; 0 when it did not run.
    double time(const std::string& name) const;
    void printRatio(const std::string& label, const std::string& measured, const std::string& baseline,
                    double goal) const;

private:
    std::map<std::string, double> times_;
};

}  // namespace tr::bench
