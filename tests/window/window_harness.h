#pragma once

#include <gtest/gtest.h>

#include <QTest>
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
    client_ =
        std::make_unique<Client>(Ports{{window_, window_, window_.Hotspots(), window_, window_.Units(),
                                        window_, window_, window_, window_, ports_.zonesView},
                                       window_.System(),
                                       ports_.browser,
                                       ports_.locator,
                                       ports_.probe,
                                       ports_.data,
                                       ports_.loop,
                                       ports_.clock,
                                       ports_.questions,
                                       ports_.settings,
                                       ports_.registry,
                                       ports_.mutex,
                                       ports_.signal,
                                       ports_.beeper,
                                       ports_.programs,
                                       ports_.trace,
                                       Folders{ports_.folders.Path() / "app", ports_.folders.Path() / "data",
                                               ports_.folders.Path() / "home"},
                                       {}});
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
