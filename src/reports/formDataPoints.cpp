#include "reports/formDataPoints.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <QStyle>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/qt/owner_block.h"
#include "reports/point_rows_widget.h"

namespace pallomir {
namespace {

constexpr Qt::WindowFlags kFlags =
    Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;

// Pixels of a font whose lines are as high as a row; larger fonts take more in proportion.
constexpr int kRowPitch = 14;
constexpr int kBelowRows = 40;
constexpr int kEmptyHeight = 47;  // 705 twips

// Kept free of the main window's edge, and of its caption line and the map's own controls.
constexpr int kSideGap = 60;
constexpr int kTopGap = 90;

}  // namespace

formDataPoints::formDataPoints(QWidget* owner, const PointTable& table, PointTableView::Actions actions)
    : QWidget(owner, kFlags),
      actions_(std::move(actions)),
      rows_(new PointRows(table, this)),
      table_(new QTableView(this)),
      lblEmpty_(new QLabel(QString::fromStdString(table.emptyNote), this)),
      lblReverseGeoCode_(new QLabel(this)),
      cmdMenu_(new QToolButton(this)),
      menu_(new QMenu(this)) {
  setObjectName("formDataPoints");
  setWindowTitle("pallomir -- datapoints");
  setAttribute(Qt::WA_DeleteOnClose);
  auto* inside = new QVBoxLayout(this);
  inside->setContentsMargins(0, 0, 0, 0);
  inside->setSpacing(0);
  BuildTable();
  BuildFoot();
  lblEmpty_->setObjectName("lblEmpty");
  lblEmpty_->setMargin(3);
  lblEmpty_->setVisible(table.rows.empty());
  table_->setVisible(!table.rows.empty());
  auto* foot = new QHBoxLayout;
  foot->setContentsMargins(4, 0, 4, 0);
  foot->addWidget(lblReverseGeoCode_, 1);
  foot->addWidget(cmdMenu_);
  inside->addWidget(table_, 1);
  inside->addWidget(lblEmpty_);
  inside->addLayout(foot);
  setAccessibleName(table.rows.empty() ? lblEmpty_->text() : QString());
  (table.rows.empty() ? static_cast<QWidget*>(cmdMenu_) : table_)->setFocus();
  SetSizes();
  const QRect over = owner->geometry();
  move(table.isOnTheLeft ? over.left() + kSideGap : over.right() - kSideGap - width(), over.top() + kTopGap);
  AskForKeyboard(*this, false);
}

void formDataPoints::BuildTable() {
  table_->setObjectName("pointTable");
  table_->setAccessibleName("Data points");
  table_->setModel(rows_);
  table_->setItemDelegate(new PointRowPainter(table_));
  table_->setSelectionMode(QAbstractItemView::NoSelection);
  table_->setTabKeyNavigation(false);
  table_->setShowGrid(false);
  table_->setWordWrap(false);
  table_->setFrameShape(QFrame::NoFrame);
  table_->setMouseTracking(true);
  table_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  table_->verticalHeader()->hide();
  table_->horizontalHeader()->setHighlightSections(false);
  table_->horizontalHeader()->setSectionsClickable(false);
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(table_, &QTableView::entered, this, &formDataPoints::MarkRow);
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &formDataPoints::MarkRow);
  connect(table_, &QTableView::doubleClicked, this, &formDataPoints::Choose);
  connect(table_, &QTableView::customContextMenuRequested, this,
          [this](const QPoint& at) { PopUpMenu(table_->viewport()->mapToGlobal(at)); });
}

void formDataPoints::BuildFoot() {
  lblReverseGeoCode_->setObjectName("lblReverseGeoCode");
  lblReverseGeoCode_->setAccessibleName("Reverse GeoCode Address");
  lblReverseGeoCode_->setTextFormat(Qt::PlainText);
  lblReverseGeoCode_->setMinimumWidth(1);
  cmdMenu_->setObjectName("cmdMenu");
  cmdMenu_->setText("Menu");
  cmdMenu_->setFocusPolicy(Qt::StrongFocus);
  cmdMenu_->setAutoRaise(true);
  connect(cmdMenu_, &QToolButton::clicked, this,
          [this] { PopUpMenu(cmdMenu_->mapToGlobal(QPoint(0, cmdMenu_->height()))); });
  const auto add = [this](const QString& caption, const QList<QKeySequence>& keys, bool needsRows, auto act) {
    auto* action = new QAction(caption, this);
    action->setShortcuts(keys);
    action->setEnabled(!needsRows || rows_->rowCount() > 0);
    addAction(action);
    connect(action, &QAction::triggered, this, act);
    return action;
  };
  menu_->addAction(add("Centre &Map on Point", {Qt::Key_Return, Qt::Key_Enter}, true, [this] { Choose(); }));
  menu_->addAction(add("&Copy", {QKeySequence::Copy}, true, [this] { Copy(); }));
  menu_->addAction(add("&Save as CSV...", {QKeySequence::Save}, true, [this] { actions_.save(); }));
  menu_->addAction(add("C&lose", {Qt::Key_Escape}, false, [this] { close(); }));
  add("Back to the Map", {Qt::Key_F6}, false, [this] { parentWidget()->activateWindow(); });
}

void formDataPoints::SetSizes() {
  ensurePolished();
  const QFontMetrics font = fontMetrics();
  const int pitch = std::max(kRowPitch, font.height());
  table_->verticalHeader()->setMinimumSectionSize(pitch);
  table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table_->verticalHeader()->setDefaultSectionSize(pitch);
  int width = 0;
  for (const auto& [column, like] : {std::pair(PointRows::kIndex, "Index 0"),
                                     {PointRows::kDistance, "Distance 0"},
                                     {PointRows::kUnit, "9999"},
                                     {PointRows::kTime, "00/00/00 00:00:00 PM 0"},
                                     {PointRows::kSpeed, "Speed 0"}}) {
    width += font.horizontalAdvance(like) + 10;
    table_->setColumnWidth(column, font.horizontalAdvance(like) + 10);
  }
  for (const int column : {PointRows::kDirection, PointRows::kStatus}) {
    width += pitch + 8;
    table_->setColumnWidth(column, pitch + 8);
  }
  cmdMenu_->setMaximumHeight(std::max(cmdMenu_->minimumSizeHint().height(), pitch + 4));
  const auto inProportion = [pitch](int pixels) { return pixels * pitch / kRowPitch; };
  const int rows = rows_->rowCount();
  const int bottom = rows == 0 ? 0 : table_->horizontalHeader()->sizeHint().height() + rows * pitch;
  const int most = screen()->availableGeometry().height() * 3 / 4;
  const int height = rows == 0 ? inProportion(kEmptyHeight) : bottom + inProportion(kBelowRows);
  const bool isCut = height > most;
  if (isCut) width += style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  table_->setVerticalScrollBarPolicy(isCut ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
  setFixedSize(width, std::min(height, most));
}

void formDataPoints::ShowAddress(const std::string& address) {
  const QString text = QString::fromStdString(address);
  lblReverseGeoCode_->setText(text);
  lblReverseGeoCode_->setToolTip(text);
}

// The row under the pointer and the one that keys have come to are one and the same.
void formDataPoints::MarkRow(const QModelIndex& at) {
  if (!at.isValid()) return;
  rows_->MarkRow(at.row());
  if (table_->currentIndex().row() != at.row()) {
    table_->selectionModel()->setCurrentIndex(rows_->index(at.row(), 0), QItemSelectionModel::NoUpdate);
    return;  // comes here again
  }
  actions_.hovered(static_cast<std::size_t>(at.row()));
}

void formDataPoints::Choose() {
  const QModelIndex current = table_->currentIndex();
  if (current.isValid()) actions_.chosen(static_cast<std::size_t>(current.row()));
}

void formDataPoints::Copy() {
  QGuiApplication::clipboard()->setText(QString::fromStdString(TextOf(rows_->Table(), '\t', "\n")));
}

// Without a loop of its own.
void formDataPoints::PopUpMenu(const QPoint& at) { menu_->popup(at); }

void formDataPoints::closeEvent(QCloseEvent* event) {
  event->accept();
  if (const auto closed = std::exchange(actions_.closed, nullptr)) closed();
}

// Without a window manager nobody else gives the keyboard back.
void formDataPoints::hideEvent(QHideEvent* event) {
  if (isActiveWindow()) parentWidget()->activateWindow();
  QWidget::hideEvent(event);
}

}  // namespace pallomir
