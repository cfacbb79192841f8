#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <string>
#include <string_view>

namespace pallomir {

/// One entry of a menu, with the entries below it. A menu is data: rooms change it by name, the skin renders
/// what it finds when a menu is opened.
struct MenuItem {
  std::string name;     ///< control name ("mnuOptionsMUArray"); entries of an array share it
  int index = 0;        ///< position in an array of entries, 0 for a single entry
  std::string caption;  ///< an "&" stands before the access key
  std::string hotKey;   ///< shown at the entry's right edge, "Ctrl+T"; it acts in the window, not in the menu
  std::string tag;
  bool checked = false;
  bool visible = true;
  bool enabled = true;
  bool isPlainText = false;  ///< the caption is the user's own: an "&" in it stands for itself
  int identifier = 0;        ///< command identifier, 0 for none
  std::list<MenuItem> children;

  bool IsSeparator() const { return caption == "-" && !isPlainText; }
};

/// All menus of the menu holder: a bar of menus.
class MenuModel {
 public:
  /// The menu bar. Its first menu is the popup that the menu button and the map's right-click open.
  MenuItem bar;

  /// Called with the entry that the user chose.
  std::function<void(const MenuItem&)> chosen;

  /// The entry, or null.
  MenuItem* Find(std::string_view name, int index = 0);
  const MenuItem* Find(std::string_view name, int index = 0) const;

  /// The entry; a name that is in no menu is a fault of the program.
  MenuItem& At(std::string_view name, int index = 0);

  /// How many entries the array has.
  int Count(std::string_view name) const;

  /// Checks exactly the array's entry `index`.
  void CheckOnly(std::string_view name, int index);

  /// The index of the array's first checked entry, or -1.
  int CheckedIndex(std::string_view name) const;

  /// The entry below which the array's entries lie, or null.
  MenuItem* ArrayParent(std::string_view name);
  const MenuItem* ArrayParent(std::string_view name) const;

  /// Adds entries behind the array's last one; they bear its name.
  void AppendToArray(std::string_view name, std::list<MenuItem> items);

  /// Deletes the entries `from` and above of the array.
  void TruncateArray(std::string_view name, int from);
};

/// Inserts at a 0-based position among the children, or at the end when there are fewer.
MenuItem& InsertItem(MenuItem& parent, std::size_t position, MenuItem item);
/// Deletes the child at the position; false when there is none.
bool DeleteItem(MenuItem& parent, std::size_t position);

}  // namespace pallomir
