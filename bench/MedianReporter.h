// Google Benchmark's table of times, and ratios of its medians.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

/// Prints Google Benchmark's own table, and keeps the median of each benchmark. It is that of the
/// processor time, the kernel's share included: nothing here waits, so that what differs between
/// the two is other programs' doing.
class MedianReporter : public benchmark::ConsoleReporter {
  public:
    MedianReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.aggregate_name == "median") {
                m_Medians[run.run_name.function_name] = run.GetAdjustedCPUTime();
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    /// Prints nothing if a filter left one of the two out.
    void PrintRatio(const std::string& name, const std::string& base, const char* pszGoal) const {
        const auto over = m_Medians.find(name);
        const auto under = m_Medians.find(base);
        if (over != m_Medians.end() && under != m_Medians.end()) {
            std::printf(
                "%-52s %8.2f   %s\n", (name + " / " + base).c_str(), over->second / under->second,
                pszGoal);
        }
    }

  private:
    std::map<std::string, double> m_Medians;
};
