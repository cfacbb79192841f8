#include <QApplication>
#include <cstdio>

#include "platform/qt/contrast_style.h"
#include "platform/qt/graphics.h"
#include "platform/qt/quiet_web.h"
#include "platform/qt/tile_scheme.h"
#include "program.h"

int main(int argc, char** argv) {
  pallomir::RegisterTileScheme();
  pallomir::OpenPagesToReaders();
  QApplication application(argc, argv);
  pallomir::ChooseGraphics();
  QApplication::setStyle(new pallomir::ContrastStyle);
  QApplication::setApplicationName("pallomir");
  QApplication::setApplicationVersion(PALLOMIR_VERSION);
  pallomir::Program program(pallomir::SystemFolders(),
                            [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); });
  return program.Run();
}
