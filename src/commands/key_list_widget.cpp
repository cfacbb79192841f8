#include "commands/key_list_widget.h"

#include <QGridLayout>
#include <QLabel>

#include "commands/hot_keys.h"
#include "commands/overlay_place_widget.h"

namespace pallomir {
namespace {

/// A label draws line feeds only.
QString Lines(const std::string& text) { return QString::fromStdString(text).remove('\r'); }

}  // namespace

KeyListPicture::KeyListPicture(QWidget* owner) : QFrame(owner) {
  setObjectName("pctKeyList");
  setAccessibleName("Hot keys");
  setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  setAutoFillBackground(true);
  auto* columns = new QGridLayout(this);
  columns->setContentsMargins(12, 8, 12, 8);
  columns->setHorizontalSpacing(20);
  columns->setVerticalSpacing(4);
  const auto add = [&](int column, const char* name, const char* heading, const std::string& text) {
    auto* head = new QLabel(heading, this);
    QFont bold = head->font();
    bold.setBold(true);
    head->setFont(bold);
    auto* body = new QLabel(Lines(text), this);
    body->setObjectName(name);
    body->setTextFormat(Qt::PlainText);
    columns->addWidget(head, 0, column);
    columns->addWidget(body, 1, column);
  };
  const KeyListText text = KeyList();
  add(0, "lblHotKey", "Hot Key", text.hotKeys);
  add(1, "lblFunction", "Function", text.functions);
  hide();
}

void KeyListPicture::ShowOverlay(const QPoint& corner) {
  adjustSize();
  move(OverlayPlace(*this, corner));
  show();
  raise();
}

}  // namespace pallomir
