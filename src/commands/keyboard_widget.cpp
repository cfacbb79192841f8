#include "commands/keyboard_widget.h"

#include <QKeyEvent>
#include <QLabel>
#include <algorithm>
#include <string_view>

#include "commands/hot_keys.h"
#include "commands/overlay_place_widget.h"
#include "ui/accessible_widget.h"

namespace pallomir {
namespace {

constexpr int kMargin = 10;
constexpr int kGap = 3;
constexpr int kQuarter = 10;  // the width of a quarter of a key, gap included
constexpr int kPitch = 36;    // from one row to the next
const QColor kCapColour(0xdd, 0xdd, 0xdd);

/// A key of the picture, in quarters of a letter key's width.
struct Cap {
  std::string_view caption;
  int width = 4;
};
struct CapRow {
  int left;  // quarters
  std::vector<Cap> caps;
};

const std::vector<CapRow>& CapRows() {
  static const std::vector<CapRow> kRows = {
      {0,
       {{"`"},
        {"1"},
        {"2"},
        {"3"},
        {"4"},
        {"5"},
        {"6"},
        {"7"},
        {"8"},
        {"9"},
        {"0"},
        {"-"},
        {"="},
        {"bk", 8}}},
      {0,
       {{"tab", 6},
        {"Q"},
        {"W"},
        {"E"},
        {"R"},
        {"T"},
        {"Y"},
        {"U"},
        {"I"},
        {"O"},
        {"P"},
        {"["},
        {"]"},
        {"\\", 6}}},
      {0,
       {{"caps", 7}, {"A"}, {"S"}, {"D"}, {"F"}, {"G"}, {"H"}, {"J"}, {"K"}, {"L"}, {";"}, {"'"}, {"cr", 9}}},
      {0, {{"shft", 9}, {"Z"}, {"X"}, {"C"}, {"V"}, {"B"}, {"N"}, {"M"}, {","}, {"."}, {"/"}}},
      {0, {{"ctl", 7}, {"alt", 7}, {"space", 28}}},
  };
  return kRows;
}

constexpr int kWidth = 60 * kQuarter;  // of the widest row

QString Text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// Arial or what measures like it; in pixels, for the caps have a size in pixels.
QFont CapFont() {
  QFont font;
  font.setFamilies({"Arial", "Liberation Sans", "Nimbus Sans"});
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(13);
  return font;
}

void Colour(QLabel* key, const QColor& ground, const QColor& text) {
  QPalette palette = key->palette();
  palette.setColor(QPalette::Window, ground);
  palette.setColor(QPalette::WindowText, text);
  key->setPalette(palette);
}

}  // namespace

KeyboardPicture::KeyboardPicture(QWidget* owner) : QFrame(owner) {
  setObjectName("pctKeyboard");
  setAccessibleName("Keyboard");
  setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  setAutoFillBackground(true);
  AddKeys();
  lblTable_ = new QLabel(this);
  lblTable_->setObjectName("lblTable");
  lblTable_->setTextFormat(Qt::PlainText);
  lblTable_->setWordWrap(true);
  lblTable_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  lblTable_->move(kMargin, kMargin + static_cast<int>(CapRows().size()) * kPitch + kMargin);
  Describe(nullptr);
  hide();
}

void KeyboardPicture::AddKeys() {
  const std::vector<std::string_view> captions = KeyCaptions();
  lblKey_.resize(captions.size());
  int top = kMargin;
  for (const CapRow& row : CapRows()) {
    int left = kMargin + row.left * kQuarter;
    rows_.emplace_back();
    for (const Cap& cap : row.caps) {
      const auto index =
          static_cast<std::size_t>(std::ranges::find(captions, cap.caption) - captions.begin());
      QLabel* key = MakeKey(captions[index], index);
      key->setGeometry(left, top, cap.width * kQuarter - kGap, kPitch - kGap);
      lblKey_.at(index) = key;
      rows_.back().push_back(key);
      left += cap.width * kQuarter;
    }
    top += kPitch;
  }
  current_ = rows_.front().front();
  current_->setFocusPolicy(Qt::TabFocus);
}

QLabel* KeyboardPicture::MakeKey(std::string_view caption, std::size_t index) {
  auto* key = new QLabel(Text(caption), this);
  SetAccessible(key, {.role = QAccessible::StaticText, .isReachable = true});
  key->setObjectName(QString("lblKey(%1)").arg(index));
  key->setAccessibleName(Text(caption));
  key->setAccessibleDescription(Text(KeyDescription(caption)).remove('\r'));
  key->setTextFormat(Qt::PlainText);
  key->setAlignment(Qt::AlignCenter);
  key->setFrameStyle(QFrame::Panel | QFrame::Raised);
  key->setAutoFillBackground(true);
  key->setFont(CapFont());
  key->installEventFilter(this);
  Colour(key, kCapColour, Qt::black);
  return key;
}

void KeyboardPicture::ShowOverlay(const QPoint& corner) {
  if (isVisible()) return;
  corner_ = corner;
  Describe(nullptr);
  show();
  raise();
}

/// Without a key the picture has room for one line.
void KeyboardPicture::Describe(QLabel* key) {
  if (described_) Colour(described_, kCapColour, Qt::black);
  described_ = key;
  if (key) Colour(key, palette().color(QPalette::Highlight), palette().color(QPalette::HighlightedText));
  const QByteArray caption = key ? key->text().toUtf8() : QByteArray();
  lblTable_->setText(
      Text(KeyDescription({caption.data(), static_cast<std::size_t>(caption.size())})).remove('\r'));
  const int width = kWidth - kGap;
  lblTable_->resize(width, std::max(lblTable_->heightForWidth(width), lblTable_->fontMetrics().height()));
  setFixedSize(width + 2 * kMargin, lblTable_->y() + lblTable_->height() + kMargin);
  move(OverlayPlace(*this, corner_));
}

void KeyboardPicture::FocusKey() { current_->setFocus(Qt::TabFocusReason); }

/// The key to the right or left in the row, or the nearest one of the next row; null at the picture's edge.
QLabel* KeyboardPicture::Neighbour(int right, int down) const {
  for (std::size_t r = 0; r < rows_.size(); ++r) {
    const auto here = std::ranges::find(rows_[r], current_);
    if (here == rows_[r].end()) continue;
    if (down == 0) {
      const auto place = here - rows_[r].begin() + right;
      return place < 0 || place >= std::ssize(rows_[r]) ? nullptr : rows_[r][static_cast<std::size_t>(place)];
    }
    const auto row = static_cast<std::ptrdiff_t>(r) + down;
    if (row < 0 || row >= std::ssize(rows_)) return nullptr;
    const int centre = current_->geometry().center().x();
    return *std::ranges::min_element(rows_[static_cast<std::size_t>(row)], {}, [centre](const QLabel* key) {
      return std::abs(key->geometry().center().x() - centre);
    });
  }
  return nullptr;
}

bool KeyboardPicture::Walk(const QKeyEvent& event) {
  const int key = event.key();
  const int right = (key == Qt::Key_Right) - (key == Qt::Key_Left);
  const int down = (key == Qt::Key_Down) - (key == Qt::Key_Up);
  if (right == 0 && down == 0) return false;
  if (QLabel* next = Neighbour(right, down)) next->setFocus(Qt::OtherFocusReason);
  return true;
}

// However it got the focus: Tab comes back to it.
void KeyboardPicture::MakeCurrent(QLabel* key) {
  current_->setFocusPolicy(Qt::NoFocus);
  current_ = key;
  current_->setFocusPolicy(Qt::TabFocus);
}

bool KeyboardPicture::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) MakeCurrent(static_cast<QLabel*>(watched));
  if (event->type() == QEvent::Enter || event->type() == QEvent::FocusIn)
    Describe(static_cast<QLabel*>(watched));
  if (event->type() == QEvent::KeyPress && Walk(*static_cast<QKeyEvent*>(event))) return true;
  return QFrame::eventFilter(watched, event);
}

}  // namespace pallomir
