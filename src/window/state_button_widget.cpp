#include "window/state_button_widget.h"

#include <QHBoxLayout>
#include <QLabel>

#include "ui/accessible_widget.h"
#include "window/icon_button_widget.h"

namespace pallomir {

StateButton::StateButton(QWidget* parent, const QString& name, const QString& icon, const QString& text)
    : QWidget(parent), icon_(new IconButton(this, "pct" + name, icon, text)), word_(new QLabel(this)) {
  icon_->chosen = [this] {
    if (chosen) chosen();
  };
  setFocusProxy(icon_);
  word_->setObjectName("lbl" + name);
  word_->setTextFormat(Qt::PlainText);
  word_->setMinimumWidth(1);  // gives way in a narrow window
  word_->hide();
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(4, 0, 0, 0);
  row->setSpacing(2);
  row->addWidget(icon_);
  row->addWidget(word_);
}

void StateButton::OpensMenu() { SetAccessible(icon_, {.role = QAccessible::ButtonMenu, .opensMenu = true}); }

void StateButton::ShowState(const QString& icon, const QString& text, const QString& word) {
  icon_->SetPicture(icon, text);
  word_->setText(word);
  word_->setVisible(!word.isEmpty());
}

}  // namespace pallomir
