#include "gate_table.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <vector>

// The benchmark program's main: runs what its arguments name, each benchmark several times in random
// interleaving, and prints the ratios of the medians as a table for docs/speed.md.

namespace pallomir::bench {
namespace {

struct Figure {
  const char* what;
  FigureRow::Measure measure;
  double atMost;
};

std::vector<Gate>& Gates() {
  static std::vector<Gate> gates;
  return gates;
}

std::vector<Figure>& Figures() {
  static std::vector<Figure> figures;
  return figures;
}

/// Keeps the medians, in nanoseconds, and lets the console reporter print as usual.
class MedianKeeper : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      const std::string name = run.run_name.str();
      if (run.error_occurred) failed_.push_back(name + ": " + run.error_message);
      if (run.aggregate_name != "median") continue;
      // What waits for the disk is measured by the clock on the wall.
      const bool isReal = name.ends_with("/real_time") || name.ends_with("/manual_time");
      const double time = isReal ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
      medians_[name] = time * 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
    }
  }

  /// Benchmarks that gave up, and why.
  const std::vector<std::string>& Failed() const { return failed_; }

  std::optional<double> Median(const std::string& name) const {
    const auto found = medians_.find(name);
    if (found == medians_.end()) return std::nullopt;
    return found->second;
  }

 private:
  std::map<std::string, double> medians_;
  std::vector<std::string> failed_;
};

std::string Time(double nanoseconds) {
  char text[32];
  if (nanoseconds < 1e3)
    std::snprintf(text, sizeof text, "%.1f ns", nanoseconds);
  else if (nanoseconds < 1e6)
    std::snprintf(text, sizeof text, "%.2f us", nanoseconds / 1e3);
  else
    std::snprintf(text, sizeof text, "%.2f ms", nanoseconds / 1e6);
  return text;
}

bool PrintTable(const MedianKeeper& keeper) {
  bool allMet = keeper.Failed().empty();
  for (const std::string& failure : keeper.Failed()) std::printf("FAILED %s\n", failure.c_str());
  std::printf(
      "\n| job | ours | yardstick | its time | ratio | gate | goal | |\n|---|---|---|---|---|---|---|---|\n");
  for (const Gate& gate : Gates()) {
    const auto ours = keeper.Median(gate.ours);
    const auto theirs = keeper.Median(gate.yardstick);
    if (!ours && !theirs) continue;  // not asked for
    if (!ours || !theirs) {
      std::printf("| %s | %s | %s | | | | | NOT MEASURED |\n", gate.job, gate.ours, gate.yardstick);
      allMet = false;
      continue;
    }
    const double ratio = *theirs / *ours;
    const bool met = ratio >= gate.gate;
    allMet = allMet && met;
    std::printf("| %s | %s | %s | %s | %.2f | %.2f | %.2f | %s |\n", gate.job, Time(*ours).c_str(),
                gate.yardstick, Time(*theirs).c_str(), ratio, gate.gate, gate.goal, met ? "met" : "MISSED");
  }
  std::printf("\n| figure | value | at most | |\n|---|---|---|---|\n");
  for (const Figure& figure : Figures()) {
    const double value = figure.measure();
    const bool met = value <= figure.atMost;
    allMet = allMet && met;
    std::printf("| %s | %.2f | %.2f | %s |\n", figure.what, value, figure.atMost, met ? "met" : "MISSED");
  }
  return allMet;
}

}  // namespace

GateRow::GateRow(const Gate& gate) { Gates().push_back(gate); }

FigureRow::FigureRow(const char* what, Measure measure, double atMost) {
  Figures().push_back({what, measure, atMost});
}

}  // namespace pallomir::bench

int main(int argc, char** argv) {
  std::vector<char*> arguments(argv, argv + argc);
  // Before the user's own, which so can change them.
  char repetitions[] = "--benchmark_repetitions=7";
  char interleaving[] = "--benchmark_enable_random_interleaving=true";
  char aggregates[] = "--benchmark_display_aggregates_only=true";
  arguments.insert(arguments.begin() + 1, {repetitions, interleaving, aggregates});
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
  pallomir::bench::MedianKeeper keeper;
  benchmark::RunSpecifiedBenchmarks(&keeper);
  return pallomir::bench::PrintTable(keeper) ? 0 : 1;
}
