#include "servicehost/service_manager.h"

#include "servicehost/listening.h"

namespace pallomir::servicehost {
namespace {

// It may just have been started again after a failure.
constexpr std::chrono::seconds kPatience{10};

}  // namespace

bool ReportRunning(const station::Options& options, Transcript& transcript) {
  const bool isAnswering = AwaitAnswers(options, kPatience);
  transcript.Say(isAnswering ? "The Data Server was already running. Nothing was changed."
                             : "The Data Server runs already, but does not answer. Stop it, then start it.");
  return isAnswering;
}

}  // namespace pallomir::servicehost
