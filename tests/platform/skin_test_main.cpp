#include <gmock/gmock.h>
#include <unistd.h>

#include <QApplication>

#include "platform/qt/graphics.h"
#include "platform/qt/quiet_web.h"
#include "platform/qt/tile_scheme.h"

namespace {

void SetDefault(const char* name, const char* value) {
  if (!qEnvironmentVariableIsSet(name)) qputenv(name, value);
}

}  // namespace

int main(int argc, char** argv) {
  SetDefault("QT_QPA_PLATFORM", "offscreen");
  // The engine refuses to run with its sandbox as root.
  if (::geteuid() == 0) SetDefault("QTWEBENGINE_DISABLE_SANDBOX", "1");
  testing::InitGoogleMock(&argc, argv);
  pallomir::RegisterTileScheme();
  pallomir::OpenPagesToReaders();
  QApplication application(argc, argv);
  pallomir::ChooseGraphics();
  application.setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
