#include "ui/accessible_widget.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QVariant>

Q_DECLARE_METATYPE(pallomir::AccessibleTraits)

namespace pallomir {
namespace {

constexpr char kProperty[] = "accessibleTraits";

class TraitsInterface : public QAccessibleWidget {
 public:
  TraitsInterface(QWidget* widget, const AccessibleTraits& traits)
      : QAccessibleWidget(widget, traits.role), traits_(traits) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    if (traits_.isReachable) state.focusable = true;
    if (traits_.opensMenu) state.hasPopup = true;
    return state;
  }

  QStringList actionNames() const override {
    QStringList names = QAccessibleWidget::actionNames();
    if (traits_.isReachable && !names.contains(setFocusAction())) names += setFocusAction();
    if (traits_.opensMenu) names.prepend(showMenuAction());
    return names;
  }

  void doAction(const QString& action) override {
    auto* button = qobject_cast<QAbstractButton*>(object());
    if (traits_.opensMenu && button && action == showMenuAction()) {
      button->click();
    } else {
      QAccessibleWidget::doAction(action);
    }
  }

 private:
  AccessibleTraits traits_;
};

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  const QVariant traits = widget ? widget->property(kProperty) : QVariant();
  return traits.isValid() ? new TraitsInterface(widget, traits.value<AccessibleTraits>()) : nullptr;
}

}  // namespace

void SetAccessible(QWidget* widget, const AccessibleTraits& traits) {
  QAccessible::installFactory(MakeInterface);  // a second time it does nothing
  widget->setProperty(kProperty, QVariant::fromValue(traits));
  // A text that was set already has made one without the traits, or else this call makes one: either goes,
  // and the next who asks gets one anew.
  QAccessibleInterface* before = QAccessible::queryAccessibleInterface(widget);
  QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(before));
}

}  // namespace pallomir
