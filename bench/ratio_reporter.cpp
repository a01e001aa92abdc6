#include "bench/ratio_reporter.h"

#include <cstdio>

namespace tr::bench {

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        if (run.run_type == Run::RT_Iteration && run.iterations > 0) {
            times_[run.benchmark_name()] = run.GetAdjustedRealTime() *
                                           (run.time_unit == benchmark::kMillisecond   ? 1e6
                                            : run.time_unit == benchmark::kMicrosecond ? 1e3
                                                                                       : 1.0);
        }
    }
}

double RatioReporter::time(const std::string& name) const {
    auto it = times_.find(name);
    return it == times_.end() ? 0.0 : it->second;
}

void RatioReporter::printRatio(const std::string& label, const std::string& measured, const std::string& baseline,
                               double goal) const {
    const double a = time(measured), b = time(baseline);
    if (a <= 0 || b <= 0) return;
    std::printf("%-58s %6.2fx  (goal: at most %.2fx) %s\n", label.c_str(), a / b, goal, a / b <= goal ? "met" : "NOT MET");
}

}  // namespace tr::bench
