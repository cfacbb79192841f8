#include "window/tab_order_widget.h"

#include <QList>
#include <QWidget>
#include <utility>
#include <vector>

namespace pallomir {
namespace {

// What gives its focus to another widget stands in the order as that one; popups have an order of their own.
bool HasPlace(const QWidget& widget, const QWidget& part) {
  return !widget.focusProxy() && widget.window() == part.window();
}

/// Qt leaves out what Tab does not reach; it may do so later.
class AllReachable {
 public:
  explicit AllReachable(const QList<QWidget*>& widgets) {
    for (QWidget* widget : widgets) {
      before_.emplace_back(widget, widget->focusPolicy());
      widget->setFocusPolicy(Qt::TabFocus);
    }
  }
  ~AllReachable() {
    for (const auto& [widget, policy] : before_) widget->setFocusPolicy(policy);
  }

 private:
  std::vector<std::pair<QWidget*, Qt::FocusPolicy>> before_;
};

}  // namespace

void SetTabOrder(std::initializer_list<QWidget*> parts) {
  QList<QWidget*> order;
  for (QWidget* part : parts) {
    order += part;
    for (QWidget* inside : part->findChildren<QWidget*>())
      if (HasPlace(*inside, *part)) order += inside;
  }
  const AllReachable meanwhile(order);
  for (qsizetype i = 1; i < order.size(); ++i) QWidget::setTabOrder(order[i - 1], order[i]);
}

}  // namespace pallomir
