#include "window/editors_widget.h"

#include <initializer_list>

#include "hotspots/formHotSpots_Edit.h"
#include "hotspots/formSecureHotSpots_Edit.h"
#include "tracking/formMobileUnit_Edit.h"

namespace pallomir {

template <class Editor, class List>
void Editors::Edit(QPointer<Editor>& editor, const List& list, std::function<void(const List&)>& applied) {
  if (!editor) {
    editor = new Editor(owner_, list, *questions_);
    editor->apply = [&applied](const List& edited) { applied(edited); };
    editor->show();
  }
  editor->raise();
  editor->activateWindow();
}

void Editors::EditUnits(const std::vector<MobileUnit>& units) {
  Edit(formMobileUnit_Edit_, units, unitsApplied);
}

void Editors::ShowUnitFlags(const std::vector<MobileUnit>& units) {
  if (formMobileUnit_Edit_) formMobileUnit_Edit_->ShowFlags(units);
}

void Editors::EditHotspots(const std::vector<std::string>& ssids) {
  Edit(formHotSpots_Edit_, ssids, hotspotsApplied);
}

void Editors::EditSecureHotspots(const std::vector<SecureHotspot>& hotspots) {
  Edit(formSecureHotSpots_Edit_, hotspots, secureHotspotsApplied);
}

std::vector<QWidget*> Editors::Open() const {
  std::vector<QWidget*> open;
  for (QWidget* editor :
       std::initializer_list<QWidget*>{formMobileUnit_Edit_, formHotSpots_Edit_, formSecureHotSpots_Edit_})
    if (editor) open.push_back(editor);
  return open;
}

}  // namespace pallomir
