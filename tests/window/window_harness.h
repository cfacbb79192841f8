#pragma once

#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QWindow>
#include <memory>

#include "fakes/client_harness.h"
#include "window/formMain.h"

namespace pallomir {

/// The real window on a client with fake ports, without a web engine.
class WindowHarness : public testing::Test {
 protected:
  void Start() {
    ports_.UseUnits("X0123456789ABFirst~-0123456789ACSecond~");
    ports_.settings.values["WindowState"] = "0";
    ports_.settings.values["WindowPos_W"] = "900";
    ports_.settings.values["WindowPos_H"] = "600";
    client_ = std::make_unique<Client>(
        ports_.PortsFor(ViewsOf(window_, ports_.zonesView, ports_.alertView, ports_.journalView,
                                ports_.pointTableView, ports_.visitsView, ports_.liveView),
                        window_.System()));
    window_.Attach(client_->RoomsOfWindow());
    client_->Load();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  template <class Widget>
  Widget* Find(const char* name) {
    Widget* widget = window_.findChild<Widget*>(name);
    EXPECT_TRUE(widget) << name;
    return widget;
  }

  QWidget* map_ = new QWidget;  // stands for the browser; belongs to the window
  formMain window_{map_};
  fakes::ClientHarness ports_;
  std::unique_ptr<Client> client_;
};

}  // namespace pallomir
