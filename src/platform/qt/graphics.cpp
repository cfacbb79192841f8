#include "platform/qt/graphics.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>
#include <QString>

namespace pallomir {
namespace {

// What draws for the graphics library calls itself by one of these names where it is a program.
bool IsImitation(const QString& renderer) {
  for (const char* name : {"llvmpipe", "softpipe", "SwiftShader", "Software Rasterizer"}) {
    if (renderer.contains(QLatin1String(name), Qt::CaseInsensitive)) return true;
  }
  return false;
}

QString Renderer() {
  QOpenGLContext context;
  QOffscreenSurface surface;
  surface.create();
  if (!context.create() || !context.makeCurrent(&surface)) return {};
  const auto* name = reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
  const QString renderer = QString::fromUtf8(name);
  context.doneCurrent();
  return renderer;
}

}  // namespace

void ChooseGraphics() {
  if (qEnvironmentVariableIsSet("QT_QUICK_BACKEND")) return;
  const QString renderer = Renderer();
  // The engine follows this choice and starts no graphics process either.
  if (renderer.isEmpty() || IsImitation(renderer))
    QQuickWindow::setSceneGraphBackend(QStringLiteral("software"));
}

}  // namespace pallomir
