#include "platform/qt/qt_beeper.h"

#include <QApplication>

namespace pallomir {

void QtBeeper::Beep() { QApplication::beep(); }

}  // namespace pallomir
