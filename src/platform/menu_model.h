#pragma once

#include <functional>
#include <list>
#include <string>
#include <string_view>

namespace pallomir {

/// What a menu entry asks for, or which menu it opens: listed in commands/command.h. Zero stands for none.
enum class Command : int;

/// One entry of a menu, with the entries below it. A menu is data: rooms change it, the skin renders what it
/// finds when a menu is opened.
struct MenuItem {
  Command command{};    ///< entries of an array share it
  std::string name;     ///< control name ("mnuOptionsMUArray"); entries of an array share it
  int index = 0;        ///< position in an array of entries, 0 for a single entry
  int identifier = 0;   ///< of an entry that is made at run time; 0 for none
  std::string caption;  ///< an "&" stands before the access key
  std::string hotKey;   ///< shown at the entry's right edge, "Ctrl+T"; it acts in the window, not in the menu
  std::string tag;
  bool checkable = false;  ///< a choice or a toggle, whether it has its check mark now or not
  bool checked = false;
  bool visible = true;
  bool enabled = true;
  bool isPlainText = false;  ///< the caption is the user's own: an "&" in it stands for itself
  std::list<MenuItem> children;
  /// Set for a submenu that is filled when it opens: changes the children, and nothing above this entry.
  std::function<void(MenuItem&)> fill;

  bool IsSeparator() const { return caption == "-" && !isPlainText; }
  bool IsMenu() const { return !children.empty() || fill; }
};

/// A text as it stands in a caption: two "&" for one, which else stands before an access key.
std::string Doubled(std::string_view text);

/// All menus of the menu holder: a bar of menus.
class MenuModel {
 public:
  /// The menu bar. Its first menu is the popup that the menu button and the map's right-click open.
  MenuItem bar;

  /// Called with the entry that the user chose.
  std::function<void(const MenuItem&)> chosen;

  /// Called when the popup has closed, after the choice, if there was one.
  std::function<void()> closed;

  /// The entry, or null.
  MenuItem* Find(Command command, int index = 0);
  const MenuItem* Find(Command command, int index = 0) const;
  /// By control name.
  MenuItem* Find(std::string_view name, int index = 0);

  /// The entry. One that is in no menu is a fault of the program: what is done to it is then done to an entry
  /// that nobody sees.
  MenuItem& At(Command command, int index = 0);
  MenuItem& At(std::string_view name, int index = 0);

  /// Visits the array's entries in their order.
  void ForEach(Command array, const std::function<void(const MenuItem&)>& visit) const;

  /// How many entries the array has.
  int Count(Command array) const;

  /// Checks exactly the array's entry `index`.
  void CheckOnly(Command array, int index);

  /// The index of the array's first checked entry, or -1.
  int CheckedIndex(Command array) const;

  /// The entry below which the array's entries lie, or null.
  MenuItem* ArrayParent(Command array);
  const MenuItem* ArrayParent(Command array) const;

  /// Adds entries behind the array's last one; they bear its command. Without such an array nothing is added.
  void AppendToArray(Command array, std::list<MenuItem> items);

  /// Deletes the entries `from` and above of the array.
  void TruncateArray(Command array, int from);

 private:
  MenuItem& OrNowhere(MenuItem* item);

  MenuItem nowhere_;
};

}  // namespace pallomir
