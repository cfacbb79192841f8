#pragma once

#include <initializer_list>

class QWidget;

namespace pallomir {

/// Lets the Tab key go through these widgets in this order, each followed by the controls inside it as they
/// were made.
void SetTabOrder(std::initializer_list<QWidget*> parts);

}  // namespace pallomir
