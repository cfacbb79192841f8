#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/program_starter.h"

namespace pallomir::fakes {

/// Records what is started; the test ends it.
class FakeProgramStarter : public ProgramStarter {
 public:
  struct State {
    bool running = true;
    int exitCode = 0;
  };
  struct Started {
    std::filesystem::path program;
    std::vector<std::string> arguments;
    std::filesystem::path workingFolder;
  };

  ProgramStart Start(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                     const std::filesystem::path& workingFolder) override {
    started.push_back({program, arguments, workingFolder});
    if (beforeStart) beforeStart();
    if (error != 0) return {error, nullptr};
    state = std::make_shared<State>();
    return {0, std::make_unique<Program>(state)};
  }
  bool OpenPage(const std::string& address) override {
    pages.push_back(address);
    return true;
  }

  void End(int exitCode = 0) { *state = {false, exitCode}; }

  std::function<void()> beforeStart;
  int error = 0;
  std::vector<Started> started;
  std::shared_ptr<State> state;  // of the last one
  std::vector<std::string> pages;

 private:
  struct Program : StartedProgram {
    explicit Program(std::shared_ptr<State> its) : state(std::move(its)) {}
    std::int64_t Id() const override { return 4242; }
    bool IsRunning() override { return state->running; }
    int ExitCode() const override { return state->exitCode; }
    std::shared_ptr<State> state;
  };
};

}  // namespace pallomir::fakes
