#include "ratios.h"

#include <QGuiApplication>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <map>
#include <vector>

namespace {

std::vector<Ratio>& ratios()
{
    static std::vector<Ratio> all;
    return all;
}

/// The usual table, with the times of single repetitions kept for the ratios.
class Reporter final : public benchmark::ConsoleReporter
{
public:
    Reporter() : ConsoleReporter(OO_None) {}

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration)
                times_[run.run_name.function_name +
                       (run.run_name.args.empty() ? "" : "/" + run.run_name.args)]
                    .push_back(run.GetAdjustedCPUTime());
        }
        ConsoleReporter::ReportRuns(runs);
    }

    double median(const std::string& name)
    {
        std::vector<double>& times = times_[name];
        if (times.empty())
            return 0;
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }

private:
    std::map<std::string, std::vector<double>> times_;
};

} // namespace

bool addRatio(const Ratio& ratio)
{
    ratios().push_back(ratio);
    return true;
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // letters need fonts, but no screen
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("\n%-28s %-28s %9s %9s\n", "benchmark", "baseline", "ratio", "at most");
    bool kept = true;
    for (const Ratio& ratio : ratios()) {
        const double time = reporter.median(ratio.benchmark);
        const double baseline = reporter.median(ratio.baseline);
        const bool measured = time > 0 && baseline > 0;
        const bool good = measured && time / baseline <= ratio.meant;
        std::printf("%-28s %-28s %9.3f %9.3f%s\n", ratio.benchmark.c_str(), ratio.baseline.c_str(),
                    measured ? time / baseline : 0, ratio.meant,
                    good       ? ""
                    : measured ? "  over"
                               : "  not measured");
        kept = kept && good;
    }
    return kept ? 0 : 1;
}
