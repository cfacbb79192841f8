#include "hotspots/formHotSpots_Edit.h"

#include "hotspots/hotspot_editors.h"

namespace pallomir {

formHotSpots_Edit::formHotSpots_Edit(QWidget* owner, const std::vector<std::string>& ssids,
                                     QuestionQueue& questions)
    : ListGridWidget(owner, OpenHotspotEditor(ssids), questions) {
  setObjectName("formHotSpots_Edit");
  setWindowTitle("Pallomir Wi-Fi HotSpots Edit Window");
}

void formHotSpots_Edit::TakeResult() {
  if (apply) apply(HotspotsOfEditor(Grid()));
}

}  // namespace pallomir
