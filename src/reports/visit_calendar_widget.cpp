#include "reports/visit_calendar_widget.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

namespace pallomir {
namespace {

constexpr int kMinutesOfDay = 24 * 60;
constexpr int kRowsInSight = 4;
constexpr int kThinnest = 2;  // pixels of a stay, however short

/// Paints a day: its date, a line every six hours, a bar for each stay.
class DayPainter : public QStyledItemDelegate {
 public:
  explicit DayPainter(VisitCalendar* calendar) : QStyledItemDelegate(calendar), calendar_(*calendar) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const VisitDay& day = calendar_.DayAt(index.row());
    const bool isCurrent = option.state.testFlag(QStyle::State_Selected);
    const QRect row = option.rect;
    painter->fillRect(row, isCurrent ? option.palette.highlight() : option.palette.base());
    painter->setPen(isCurrent ? option.palette.highlightedText().color() : option.palette.text().color());
    const int dateWidth = option.fontMetrics.horizontalAdvance("Wed 00/00/00  ");
    painter->drawText(QRect(row.left() + 2, row.top(), dateWidth, row.height()), Qt::AlignVCenter,
                      QString::fromStdString(DayText(day.day)));
    const QRect hours(row.left() + dateWidth, row.top() + 1, row.width() - dateWidth - 4, row.height() - 2);
    const auto x = [&](int minute) { return hours.left() + minute * hours.width() / kMinutesOfDay; };
    painter->fillRect(hours, option.palette.alternateBase());
    for (const DayStay& stay : day.stays) {
      const int width = std::max(kThinnest, x(stay.to) - x(stay.from));
      const int left = std::min(x(stay.from), hours.right() + 1 - width);
      painter->fillRect(QRect(left, hours.top() + 2, width, hours.height() - 4), calendar_.ColourOf(stay));
    }
    for (int hour = 0; hour <= 24; hour += 6)
      painter->drawLine(x(hour * 60), hours.top(), x(hour * 60), hours.bottom());
    if (option.state.testFlag(QStyle::State_HasFocus)) {
      painter->setPen(QPen(option.palette.text().color(), 1, Qt::DotLine));
      painter->drawRect(row.adjusted(0, 0, -1, -1));
    }
  }

 private:
  const VisitCalendar& calendar_;
};

}  // namespace

VisitCalendar::VisitCalendar(QWidget* parent) : QListWidget(parent) {
  setObjectName("visitCalendar");
  setAccessibleName("Days of the visits, hour by hour");
  setToolTip("Each day from midnight to midnight, a line every six hours");
  setUniformItemSizes(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setItemDelegate(new DayPainter(this));
  connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0 && chosen) chosen(DayAt(row).stays.front().visit);
  });
}

void VisitCalendar::ShowDays(std::vector<VisitDay> days, std::span<const SearchedUnit> units) {
  const QSignalBlocker quiet(this);
  clear();
  days_ = std::move(days);
  colours_.clear();
  for (const SearchedUnit& unit : units) colours_.push_back(QColor::fromRgb(unit.colour));
  for (const VisitDay& day : days_) addItem(QString::fromStdString(SentenceOf(day, units)));
}

void VisitCalendar::ShowVisit(std::size_t visit) {
  const auto day = std::ranges::find_if(days_, [visit](const VisitDay& each) {
    return std::ranges::any_of(each.stays, [visit](const DayStay& stay) { return stay.visit == visit; });
  });
  if (day == days_.end()) return;
  const QSignalBlocker quiet(this);
  setCurrentRow(static_cast<int>(day - days_.begin()));
}

QSize VisitCalendar::sizeHint() const {
  return {QListWidget::sizeHint().width(), kRowsInSight * (fontMetrics().height() + 2) + 2 * frameWidth()};
}

}  // namespace pallomir
