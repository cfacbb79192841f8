#include <asio/io_context.hpp>
#include <asio/signal_set.hpp>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <iostream>

#include "station/import/importer.h"
#include "station/options.h"
#include "station/station.h"
#include "station/store/open_store.h"
#include "station/unit_lists.h"

namespace pallomir::station {
namespace {

void LogToStandardError(const std::string& line) { std::cerr << line << std::endl; }

Millis LocalToday() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  return ToMillis({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday});
}

int Run(const Options& options, const ServeCommand&) {
  asio::io_context context;
  asio::signal_set signals(context, SIGINT, SIGTERM);
  signals.async_wait([&context](std::error_code, int) { context.stop(); });
  Station station(context, options, LogToStandardError);
  if (const std::string problem = station.Open(); !problem.empty()) {
    std::cerr << "pallomir-station: " << problem << std::endl;
    return kPortTaken;
  }
  std::cout << station.ReadyLine() << std::endl;
  context.run();
  return kDone;
}

int Run(const Options& options, const ImportCommand& command) {
  const auto store = OpenStore(options.data, LogToStandardError);
  const ImportOutcome outcome = Import(command, *store, LocalToday());
  (outcome.isDone ? std::cout : std::cerr << "pallomir-station: ") << outcome.text << std::flush;
  DemoSource demo([] { return Millis{0}; });
  if (outcome.isDone && options.isDemoOn && demo.Knows(command.unitId))
    std::cerr << "note: a demo unit has this ID and hides the import while Demo is on" << std::endl;
  return outcome.isDone ? kDone : kFailed;
}

int Run(const Options& options, const UnitsCommand& command) {
  std::string problem;
  const std::vector<StoredUnit> units = OpenStore(options.data, LogToStandardError)->Units(problem);
  if (!problem.empty()) {
    std::cerr << "pallomir-station: " << problem << std::endl;
    return kFailed;
  }
  std::cout << (command.asClientList ? ClientUnitList(units) + "\n" : UnitLines(units)) << std::flush;
  return kDone;
}

int Run(const Options& options, const VisitsCommand& command) {
  const VisitsOutcome outcome = FindVisits(command, *OpenStore(options.data, LogToStandardError));
  std::cout << outcome.list << std::flush;
  if (outcome.isDone) return kDone;
  std::cerr << "pallomir-station: " << outcome.complaint << std::flush;
  return kFailed;
}

}  // namespace
}  // namespace pallomir::station

int main(int argc, char** argv) {
  using namespace pallomir::station;
  std::signal(SIGPIPE, SIG_IGN);  // whoever reads our output may leave without ending the service
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  const auto parsed = ParseCommandLine({argv + 1, argv + argc}, program.parent_path());
  if (const auto* nothing = std::get_if<NothingToRun>(&parsed)) {
    (nothing->exitCode == kDone ? std::cout : std::cerr) << nothing->text;
    return nothing->exitCode;
  }
  const auto& line = std::get<CommandLine>(parsed);
  return std::visit([&line](const auto& command) { return Run(line.options, command); }, line.command);
}
