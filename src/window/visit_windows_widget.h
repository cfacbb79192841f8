#pragma once

#include <QPointer>

#include "reports/visits_view.h"

class QFileDialog;

namespace pallomir {

class formBeenHere;
class formMain;

/// The window of the search for visits, over the main window.
class VisitWindows : public VisitsView {
 public:
  /// `window` outlives this object.
  explicit VisitWindows(formMain& window) : window_(window) {}

  void ShowBeenHere(BeenHere& search, Actions actions) override;
  void RefreshBeenHere() override;
  void AskVisitsFile(std::function<void(const std::filesystem::path&)> then) override;
  void CloseBeenHere() override;

 private:
  formMain& window_;
  QPointer<formBeenHere> formBeenHere_;
  QPointer<QFileDialog> fileDialog_;
};

}  // namespace pallomir
