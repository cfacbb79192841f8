#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>

#include "map/page_form.h"

namespace pallomir {

/// The address of the place that was right-clicked last, for the windows that name it. The page answers each
/// question in turn, without saying for which place: an answer to a question from before the last click is
/// dropped, as is one from a page on which nothing has been clicked yet, which would tell of its centre.
class ClickedAddress {
 public:
  using Then = std::function<void(const std::string& address)>;  ///< UTF-8, may be empty

  /// `form` outlives this.
  explicit ClickedAddress(PageForm& form) : form_(form) {}

  /// Asks the page. Whoever has asked since the last click gets the answer, once; asking again takes the
  /// place of the former `then`. Where the answer is dropped nothing is called.
  void Ask(const void* who, Then then);
  /// Nothing is told to `who` any more.
  void Forget(const void* who) { waiting_.erase(who); }

  // What happens on the page.
  void OnClick();
  void OnAnswer(const std::string& address);
  void OnPageReady();
  void OnPageLost();

 private:
  PageForm& form_;
  bool isClicked_ = false;      // on the page that is there
  std::size_t asked_ = 0;       // and not answered, since the last click
  std::size_t olderAsked_ = 0;  // the same before it: their answers come first
  std::map<const void*, Then> waiting_;
};

}  // namespace pallomir
