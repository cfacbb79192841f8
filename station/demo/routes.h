#pragma once

#include "station/demo/path.h"

namespace pallomir::station {

/// The roads that the demo units drive. The first four end where they begin; the others, unless they say
/// otherwise, lead from one town to another.
Path DeliveryRoute();  ///< Bethlehem, Pennsylvania: the town's streets on both banks of the Lehigh
Path EastonLoop();     ///< Bethlehem, Easton, Nazareth, Bath and back
Path AllentownLoop();  ///< Allentown's centre, Emmaus, Macungie, Trexlertown and back
Path SaucconLoop();    ///< Bethlehem, Hellertown, Coopersburg, Emmaus, Allentown, Whitehall and back
Path BethlehemToPhillyAirport();
Path DallasToNashville();
Path NashvilleToBethlehem();
Path AcrossWisconsin();  ///< Hudson to Milwaukee by Interstate 94
Path MinneapolisTour();  ///< ends where it begins

}  // namespace pallomir::station
