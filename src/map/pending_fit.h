#pragma once

#include <optional>
#include <variant>

#include "map/map_view.h"

namespace pallomir {

/// A fit that the page is to be given, and what it waits for.
namespace fit {

/// No data yet: what the user asks for is drawn, but the page stays where it is.
struct BeforeData {
  bool isBeingDrawn = false;
};
/// The page's first fit, until the tiles for it are drawn.
struct FirstWhenDrawn {
  WorldBox box;
};
/// The page's first fit, drawn, until the page reports its map.
struct FirstWhenCreated {
  WorldBox box;
};
/// A fit for a page that has had its first one, until the tiles for it are drawn.
struct WhenDrawn {
  WorldBox box;
};
/// The page has had its first fit, and nothing waits.
struct None {};

}  // namespace fit

///     BeforeData -> FirstWhenDrawn -> FirstWhenCreated -> None <-> WhenDrawn
///
/// A page without a map skips nothing, one with a map skips FirstWhenCreated. Losing the page leads back to
/// its first fit.
class PendingFit {
 public:
  /// A fit that is over: which one, and to what.
  struct Due {
    bool isFirst = false;
    WorldBox box;
  };

  /// The first batch of data has come.
  bool HasData() const { return !std::holds_alternative<fit::BeforeData>(state_); }
  bool IsFirstSent() const;
  /// A fit waits for the end of a drawing.
  bool IsBeingDrawn() const;

  /// The user asks for a fit; its tiles are being drawn.
  void Ask(const WorldBox& box);
  /// The same for data that have come, the first ones or later ones.
  void AskForData(const WorldBox& box);
  /// Another box takes the place of a fit that is being drawn. False where there is none.
  bool Redirect(const WorldBox& box);

  /// The tiles are drawn; gives what is to be sent now.
  std::optional<Due> Drawn(bool isMapCreated);
  /// The page has reported its map; gives the box of the first fit where that waited for it.
  std::optional<WorldBox> MapCreated();
  /// The next page gets a first fit: of what waits, or else of what this one has shown.
  void PageLost(const WorldBox& shown);

 private:
  std::variant<fit::BeforeData, fit::FirstWhenDrawn, fit::FirstWhenCreated, fit::WhenDrawn, fit::None> state_;
};

}  // namespace pallomir
