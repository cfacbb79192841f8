#pragma once

namespace pallomir::bench {

/// A promise about speed: `ours` takes at most 1/`gate` of the time of `yardstick`, both benchmarks' full
/// names, measured interleaved in one run. `goal` is what we want to reach.
struct Gate {
  const char* job;
  const char* ours;
  const char* yardstick;
  double gate;
  double goal;
};

/// Adds a row to the table that the benchmark program prints when it is through. Rows neither of whose
/// benchmarks ran are left out. The program's exit code is 1 when a gate is missed or a
/// benchmark failed.
class GateRow {
 public:
  explicit GateRow(const Gate& gate);
};

/// A figure that is no time (bytes a point …), printed beneath the table; missed when it is above `atMost`.
class FigureRow {
 public:
  using Measure = double (*)();
  FigureRow(const char* what, Measure measure, double atMost);
};

}  // namespace pallomir::bench
