#include "reports/clicked_address.h"

#include <gmock/gmock.h>

#include "fakes/fake_system.h"

namespace pallomir {
namespace {

// Events in their order: a right-click (!), a question of one of two windows (1, 2) and its end ("x" and
// "y"), an answer (a, b …), the loss of the page (-) and its being ready (+). What the windows are told
// stands as the window and the answer.
TEST(ClickedAddress, AnAnswerGoesToWhoAskedForTheLastClick) {
  const struct {
    const char* events;
    const char* told;
  } cases[] = {
      {"!1a", "1a"},   {"!1ab", "1a"},      {"!12a", "1a2a"},   {"!11ab", "1a"},     {"1a", ""},
      {"1!2ab", "2b"}, {"!1!a", ""},        {"!1!2ab", "2b"},   {"!1!1!1abc", "1c"}, {"!1-+a", ""},
      {"!1-+1a", ""},  {"!1-+1a!2b", "2b"}, {"!1x2a", "2a"},    {"!1x!2yab", ""},    {"!1-!2a", "2a"},
      {"1+!1a", "1a"}, {"!1a2b", "1a2b"},   {"!1a!2b", "1a2b"}, {"!1+a", "1a"},
  };
  for (const auto& [events, told] : cases) {
    fakes::FakeBrowser browser;
    PageForm form(browser);
    ClickedAddress address(form);
    std::string seen;
    std::size_t asked = 0;
    const auto ask = [&](const char* window) {
      address.Ask(window, [&seen, window](const std::string& answer) { seen += window + answer; });
      ++asked;
    };
    const char windows[2][2] = {"1", "2"};
    for (const char* event = events; *event != 0; ++event) {
      switch (*event) {
        case '!':
          address.OnClick();
          break;
        case '1':
          ask(windows[0]);
          break;
        case '2':
          ask(windows[1]);
          break;
        case 'x':
          address.Forget(windows[0]);
          break;
        case 'y':
          address.Forget(windows[1]);
          break;
        case '-':
          address.OnPageLost();
          break;
        case '+':
          address.OnPageReady();
          break;
        default:
          address.OnAnswer(std::string(1, *event));
      }
    }
    EXPECT_EQ(seen, told) << events;
    EXPECT_EQ(browser.writes.size(), asked);
  }
}

}  // namespace
}  // namespace pallomir
