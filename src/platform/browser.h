#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace pallomir {

/// The embedded web browser that shows the map page.
///
/// The two callbacks come from the event loop, never from inside a call of ours.
class Browser {
 public:
  virtual ~Browser() = default;

  /// Asked before every navigation of the main frame and of sub-frames; true cancels it. The answer is wanted
  /// at once, so the listener only looks at the address and acts on it later.
  std::function<bool(const std::string& url)> beforeNavigate;

  /// A page that was asked for could not be loaded, or the process that showed it died.
  std::function<void(const std::string& reason)> pageLost;

  /// An address with a scheme, without one ("http" is supplied), or an absolute file path.
  virtual void Navigate(const std::string& address) = 0;

  /// Sets the value of one field of the page's form `Form1`. Writes reach the page in the order of the calls;
  /// one that finds no such field is lost with a trace line.
  virtual void WriteField(std::string_view field, std::string_view value) = 0;

  virtual void Stop() = 0;
};

}  // namespace pallomir
