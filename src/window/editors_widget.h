#pragma once

#include <QPointer>
#include <functional>
#include <vector>

#include "hotspots/hotspot_view.h"
#include "tracking/unit_view.h"
#include "ui/question_queue.h"

class QWidget;

namespace pallomir {

class formHotSpots_Edit;
class formMobileUnit_Edit;
class formSecureHotSpots_Edit;

/// The list editors over the main window, at most one of each kind.
class Editors : public UnitView, public HotspotView {
 public:
  /// `owner` is the window that they stay on top of.
  explicit Editors(QWidget* owner) : owner_(owner) {}

  void SetQuestions(QuestionQueue& questions) { questions_ = &questions; }

  // Apply was pressed.
  std::function<void(const std::vector<MobileUnit>&)> unitsApplied;
  std::function<void(const std::vector<std::string>&)> hotspotsApplied;
  std::function<void(const std::vector<SecureHotspot>&)> secureHotspotsApplied;

  void EditUnits(const std::vector<MobileUnit>& units) override;
  void ShowUnitFlags(const std::vector<MobileUnit>& units) override;
  void EditHotspots(const std::vector<std::string>& ssids) override;
  void EditSecureHotspots(const std::vector<SecureHotspot>& hotspots) override;

  std::vector<QWidget*> Open() const;

 private:
  template <class Editor, class List>
  void Edit(QPointer<Editor>& editor, const List& list, std::function<void(const List&)>& applied);

  QWidget* owner_;
  QuestionQueue* questions_ = nullptr;
  QPointer<formMobileUnit_Edit> formMobileUnit_Edit_;
  QPointer<formHotSpots_Edit> formHotSpots_Edit_;
  QPointer<formSecureHotSpots_Edit> formSecureHotSpots_Edit_;
};

}  // namespace pallomir
