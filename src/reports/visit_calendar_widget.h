#pragma once

#include <QListWidget>
#include <functional>
#include <vector>

#include "reports/visit_calendar.h"

namespace pallomir {

/// The visits as a picture, a day a row, hour by hour, in the colours of their units. A row is told to
/// assistive programs as a sentence; the arrow keys go from day to day.
class VisitCalendar : public QListWidget {
 public:
  explicit VisitCalendar(QWidget* parent);

  std::function<void(std::size_t visit)> chosen;  ///< the last visit of the day that is current now

  void ShowDays(std::vector<VisitDay> days, std::span<const SearchedUnit> units);
  /// Makes the day at the visit's exit the current one, without a word.
  void ShowVisit(std::size_t visit);

  QSize sizeHint() const override;

  // For what paints the rows.
  const VisitDay& DayAt(int row) const { return days_[static_cast<std::size_t>(row)]; }
  QColor ColourOf(const DayStay& stay) const { return colours_[stay.unit]; }

 private:
  std::vector<VisitDay> days_;
  std::vector<QColor> colours_;  // by unit
};

}  // namespace pallomir
