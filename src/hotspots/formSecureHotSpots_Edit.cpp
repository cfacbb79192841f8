#include "hotspots/formSecureHotSpots_Edit.h"

#include "hotspots/hotspot_editors.h"

namespace pallomir {

formSecureHotSpots_Edit::formSecureHotSpots_Edit(QWidget* owner, const std::vector<SecureHotspot>& hotspots,
                                                 QuestionQueue& questions)
    : ListGridWidget(owner, OpenSecureHotspotEditor(hotspots), questions) {
  setObjectName("formSecureHotSpots_Edit");
  setWindowTitle("Pallomir Wi-Fi Secure HotSpots List");
}

void formSecureHotSpots_Edit::TakeResult() {
  if (apply) apply(SecureHotspotsOfEditor(Grid()));
}

}  // namespace pallomir
