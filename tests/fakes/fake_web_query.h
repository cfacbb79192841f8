#pragma once

#include <utility>

#include "platform/web_query.h"

namespace pallomir::fakes {

/// Keeps the question until the test answers it.
class FakeWebQuery : public WebQuery {
 public:
  void Get(const std::string& asked, std::function<void(const Answer&)> then) override {
    address = asked;
    then_ = std::move(then);
  }
  void Cancel() override {
    ++cancelled;
    then_ = {};
  }
  void AnswerIt(const Answer& answer) {
    if (const auto then = std::exchange(then_, {})) then(answer);
  }

  std::string address;
  int cancelled = 0;

 private:
  std::function<void(const Answer&)> then_;
};

}  // namespace pallomir::fakes
