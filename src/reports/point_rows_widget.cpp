#include "reports/point_rows_widget.h"

#include <QPalette>
#include <utility>

#include "reports/point_pictures_widget.h"

namespace pallomir {
namespace {

// So far from the ground to the text is the ground of the marked row where the palette is dark.
constexpr double kMarkedShare = 0.25;

QColor Between(const QColor& from, const QColor& to, double share) {
  return QColor::fromRgbF(static_cast<float>(from.redF() + (to.redF() - from.redF()) * share),
                          static_cast<float>(from.greenF() + (to.greenF() - from.greenF()) * share),
                          static_cast<float>(from.blueF() + (to.blueF() - from.blueF()) * share));
}

struct RowColours {
  QColor ground;
  QColor text;
};

RowColours ColoursOf(const QPalette& palette, bool isMarked) {
  const QColor base = palette.color(QPalette::Base);
  const QColor text = palette.color(QPalette::Text);
  if (base.lightness() < 128) return {isMarked ? Between(base, text, kMarkedShare) : base, text};
  return {isMarked ? QColor(238, 238, 238) : QColor(255, 255, 255), Qt::black};
}

}  // namespace

void PointRows::MarkRow(int row) {
  const int before = std::exchange(marked_, row);
  for (const int changed : {before, row})
    if (changed >= 0) emit dataChanged(index(changed, 0), index(changed, kColumns - 1));
}

int PointRows::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(table_.rows.size());
}

int PointRows::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

QVariant PointRows::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const PointTableRow& row = table_.rows.at(static_cast<std::size_t>(index.row()));
  const std::string texts[] = {row.txtIdx, row.txtDst, row.txtUnt, row.txtTim, row.txtSpd};
  const std::string pictures[] = {HeadingName(row.imgDir), StatusName(row.imgAPt)};
  const bool isText = index.column() < kDirection;
  const auto column = static_cast<std::size_t>(index.column());
  switch (role) {
    case Qt::DisplayRole:
      return isText ? QString::fromStdString(texts[column]) : QVariant();
    case Qt::ToolTipRole:
      return isText ? QVariant() : QString::fromStdString(pictures[column - kDirection]);
    // Who walks down the first column hears all of each row.
    case Qt::AccessibleTextRole:
      if (column == kIndex) return QString::fromStdString(SummaryOf(table_, row));
      return QString::fromStdString(isText ? texts[column] : pictures[column - kDirection]);
    case Qt::TextAlignmentRole:
      return (column == kTime ? Qt::Alignment(Qt::AlignCenter) : Qt::AlignRight | Qt::AlignVCenter).toInt();
    default:
      return {};
  }
}

QVariant PointRows::headerData(int section, Qt::Orientation orientation, int role) const {
  static const char* const kHeadings[] = {"Index", "Distance", "Unit", "Time", "Speed", "", ""};
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return kHeadings[section];
  if (role == Qt::ToolTipRole && section == kDistance) return table_.distanceUnit;
  if (role == Qt::ToolTipRole && section == kSpeed) return table_.speedUnit;
  if (role != Qt::AccessibleTextRole && role != Qt::ToolTipRole) return {};
  if (section == kDirection) return "Heading";
  return section == kStatus ? QVariant("Status") : QVariant();
}

void PointRowPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  const auto& rows = static_cast<const PointRows&>(*index.model());
  const PointTableRow& row = rows.Table().rows.at(static_cast<std::size_t>(index.row()));
  const RowColours colours = ColoursOf(option.palette, index.row() == rows.MarkedRow());
  painter->fillRect(option.rect, colours.ground);
  if (index.column() == PointRows::kDirection)
    return PaintHeading(*painter, option.rect, row.imgDir, colours.text);
  if (index.column() == PointRows::kStatus)
    return PaintStatus(*painter, option.rect, row.imgAPt, colours.ground);
  constexpr int kMargin = 4;
  painter->setPen(colours.text);
  painter->setFont(option.font);
  painter->drawText(option.rect.adjusted(kMargin, 0, -kMargin, 0), index.data(Qt::TextAlignmentRole).toInt(),
                    index.data().toString());
}

}  // namespace pallomir
