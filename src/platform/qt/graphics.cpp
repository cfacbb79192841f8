#include "platform/qt/graphics.h"

#include <unistd.h>

#include <QByteArray>
#include <string>

namespace pallomir {
namespace {

constexpr char kBackend[] = "QT_QUICK_BACKEND";

// The kernel numbers the nodes through which programs reach a graphics processor from 128 on, up to 64 of
// them; one driver has its own node instead.
bool HasGraphicsProcessor() {
  const auto canUse = [](const std::string& node) { return ::access(node.c_str(), R_OK | W_OK) == 0; };
  constexpr int kFirst = 128, kCount = 64;
  for (int number = kFirst; number < kFirst + kCount; ++number) {
    if (canUse("/dev/dri/renderD" + std::to_string(number))) return true;
  }
  return canUse("/dev/nvidiactl");
}

}  // namespace

void ChooseGraphics() {
  // The engine follows this setting and starts no graphics process either.
  if (!qEnvironmentVariableIsSet(kBackend) && !HasGraphicsProcessor()) qputenv(kBackend, "software");
}

}  // namespace pallomir
