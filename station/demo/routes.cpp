// Waypoints along public roads, from general knowledge of where they run. They are close enough that a track
// lies on or beside its road at the zoom levels of a town.
#include "station/demo/routes.h"

namespace pallomir::station {
namespace {

// Speed limits, miles an hour.
constexpr double kInterstate = 65;
constexpr double kOpenInterstate = 70;
constexpr double kExpressway = 55;
constexpr double kCountryRoad = 45;
constexpr double kMainStreet = 35;
constexpr double kTownStreet = 25;

// How long vehicles stand, seconds.
constexpr double kDelivery = 150;
constexpr double kErrand = 420;
constexpr double kRest = 1500;

constexpr TownGrid kBethlehemNorth{{40.6190, -75.3815}, 4, 135, 190};
constexpr TownGrid kBethlehemSouth{{40.6072, -75.3838}, 12, 150, 170};
constexpr TownGrid kAllentown{{40.6023, -75.4714}, 342, -155, 150};
constexpr TownGrid kMinneapolis{{44.9483, -93.2779}, 0, 205, 201};

}  // namespace

Path DeliveryRoute() {
  PathBuilder path({40.6566, -75.4025});
  path.Streets(kMainStreet, {{40.6540, -75.4008}, {40.6472, -75.3962}, {40.6398, -75.3921}})
      .Streets(kMainStreet, {{40.6334, -75.3880}, {40.6290, -75.3846}});
  const TownGrid& north = kBethlehemNorth;
  path.Streets(kTownStreet, north.At({{0, 5}, {2, 5}})).Stop(kDelivery);
  path.Streets(kTownStreet, north.At({{4, 5}, {4, 4}, {1, 4}})).Stop(kDelivery);
  path.Streets(kTownStreet, north.At({{0, 4}, {0, 3}, {3, 3}})).Stop(kDelivery);
  path.Streets(kTownStreet, north.At({{6, 3}, {6, 2}, {4, 2}})).Stop(kDelivery);
  path.Streets(kTownStreet, north.At({{1, 2}, {1, 1}, {5, 1}})).Stop(kDelivery);
  path.Streets(kTownStreet, north.At({{7, 1}, {7, 0}, {3, 0}})).Stop(kDelivery);
  path.Streets(kTownStreet, north.At({{0, 0}}));
  path.Highway(kMainStreet, {{40.6166, -75.3835}, {40.6140, -75.3842}, {40.6112, -75.3846}});
  const TownGrid& south = kBethlehemSouth;
  path.Streets(kTownStreet, south.At({{0, 2}, {3, 2}})).Stop(kDelivery);
  path.Streets(kTownStreet, south.At({{6, 2}, {6, 1}, {4, 1}})).Stop(kDelivery);
  path.Streets(kTownStreet, south.At({{1, 1}, {1, 0}, {5, 0}})).Stop(kDelivery);
  path.Streets(kTownStreet, south.At({{8, 0}, {8, 2}, {8, 3}})).Stop(kDelivery);
  path.Streets(kTownStreet, south.At({{11, 3}, {11, 2}, {14, 2}})).Stop(kDelivery);
  path.Streets(kMainStreet, {{40.6152, -75.3560}, {40.6208, -75.3548}, {40.6262, -75.3538}}).Stop(kDelivery);
  path.Streets(kMainStreet, {{40.6318, -75.3532}, {40.6370, -75.3560}, {40.6378, -75.3640}});
  path.Streets(kTownStreet, {{40.6382, -75.3702}, {40.6424, -75.3706}}).Stop(kDelivery);
  path.Streets(kMainStreet, {{40.6480, -75.3712}, {40.6530, -75.3718}, {40.6586, -75.3722}});
  return path
      .Highway(kExpressway,
               {{40.6594, -75.3760}, {40.6583, -75.3860}, {40.6562, -75.3960}, {40.6566, -75.4025}})
      .Stop(kErrand)
      .Take();
}

Path EastonLoop() {
  return PathBuilder({40.6218, -75.3705})
      .Streets(kTownStreet, {{40.6260, -75.3703}, {40.6320, -75.3706}, {40.6382, -75.3708}})
      .Streets(kMainStreet, {{40.6480, -75.3712}, {40.6586, -75.3722}})
      .Highway(kExpressway, {{40.6612, -75.3600},
                             {40.6655, -75.3380},
                             {40.6710, -75.3130},
                             {40.6790, -75.2840},
                             {40.6850, -75.2600},
                             {40.6925, -75.2380},
                             {40.6952, -75.2200}})
      .Streets(kTownStreet, {{40.6932, -75.2150}, {40.6912, -75.2090}})
      .Stop(kErrand)
      .Streets(kTownStreet,
               {{40.6906, -75.2140}, {40.6899, -75.2200}, {40.6893, -75.2260}, {40.6888, -75.2330}})
      .Streets(kMainStreet, {{40.6880, -75.2420}, {40.6868, -75.2520}, {40.6846, -75.2630}})
      .Highway(kExpressway,
               {{40.6870, -75.2810}, {40.7010, -75.2870}, {40.7190, -75.2900}, {40.7360, -75.2920}})
      .Streets(kMainStreet, {{40.7384, -75.3000}, {40.7404, -75.3096}})
      .Stop(kErrand)
      .Streets(kTownStreet, {{40.7402, -75.3160}, {40.7398, -75.3220}})
      .Highway(kCountryRoad,
               {{40.7388, -75.3350}, {40.7352, -75.3520}, {40.7310, -75.3700}, {40.7262, -75.3880}})
      .Streets(kTownStreet, {{40.7257, -75.3941}})
      .Stop(kErrand)
      .Highway(kCountryRoad,
               {{40.7170, -75.3925}, {40.7040, -75.3890}, {40.6900, -75.3860}, {40.6740, -75.3830}})
      .Streets(kMainStreet, {{40.6586, -75.3790}, {40.6500, -75.3766}, {40.6420, -75.3757}})
      .Streets(kTownStreet,
               {{40.6340, -75.3750}, {40.6262, -75.3745}, {40.6222, -75.3742}, {40.6218, -75.3705}})
      .Stop(kErrand)
      .Take();
}

Path AllentownLoop() {
  const TownGrid& town = kAllentown;
  PathBuilder path({40.6023, -75.4714});
  path.Streets(kTownStreet, town.At({{0, 2}, {2, 2}, {2, 4}})).Stop(kErrand);
  path.Streets(kTownStreet, town.At({{5, 4}, {5, 1}, {5, 0}, {8, 0}})).Stop(kErrand);
  path.Streets(kMainStreet, {{40.5966, -75.4878}, {40.5934, -75.4990}, {40.5902, -75.5110}});
  return path.Streets(kMainStreet, {{40.5870, -75.5220}, {40.5780, -75.5236}, {40.5690, -75.5190}})
      .Streets(kMainStreet, {{40.5590, -75.5110}, {40.5480, -75.5040}, {40.5396, -75.4969}})
      .Stop(kErrand)
      .Highway(kCountryRoad,
               {{40.5350, -75.5080}, {40.5300, -75.5220}, {40.5230, -75.5400}, {40.5170, -75.5530}})
      .Streets(kTownStreet, {{40.5159, -75.5552}, {40.5172, -75.5600}})
      .Stop(kErrand)
      .Highway(kCountryRoad,
               {{40.5240, -75.5720}, {40.5330, -75.5860}, {40.5420, -75.5980}, {40.5480, -75.6050}})
      .Streets(kMainStreet, {{40.5502, -75.6000}, {40.5540, -75.5900}})
      .Stop(kErrand)
      .Highway(kExpressway,
               {{40.5600, -75.5780}, {40.5680, -75.5620}, {40.5740, -75.5470}, {40.5790, -75.5340}})
      .Streets(kMainStreet, {{40.5828, -75.5230}, {40.5868, -75.5110}, {40.5905, -75.4990}})
      .Streets(kTownStreet,
               {{40.5946, -75.4900}, {40.5972, -75.4830}, {40.5998, -75.4772}, {40.6023, -75.4714}})
      .Stop(kErrand)
      .Take();
}

Path SaucconLoop() {
  return PathBuilder({40.6096, -75.3780})
      .Streets(kTownStreet, {{40.6112, -75.3700}, {40.6122, -75.3620}, {40.6090, -75.3540}})
      .Streets(kMainStreet, {{40.6010, -75.3480}, {40.5900, -75.3440}, {40.5795, -75.3407}})
      .Stop(kErrand)
      .Streets(kMainStreet, {{40.5850, -75.3422}, {40.5880, -75.3436}})
      .Highway(kInterstate,
               {{40.5850, -75.3600}, {40.5760, -75.3850}, {40.5640, -75.4080}, {40.5560, -75.4250}})
      .Highway(kExpressway,
               {{40.5450, -75.4210}, {40.5350, -75.4080}, {40.5240, -75.3980}, {40.5115, -75.3905}})
      .Streets(kTownStreet, {{40.5090, -75.3898}, {40.5062, -75.3886}})
      .Stop(kErrand)
      .Highway(kCountryRoad, {{40.5115, -75.3960},
                              {40.5190, -75.4200},
                              {40.5270, -75.4480},
                              {40.5340, -75.4760},
                              {40.5396, -75.4969}})
      .Streets(kMainStreet,
               {{40.5480, -75.4930}, {40.5570, -75.4890}, {40.5680, -75.4860}, {40.5790, -75.4840}})
      .Streets(kTownStreet, {{40.5880, -75.4800}, {40.5950, -75.4760}, {40.6023, -75.4714}})
      .Stop(kErrand)
      .Streets(kTownStreet, {{40.6090, -75.4742}, {40.6160, -75.4770}})
      .Streets(kMainStreet, {{40.6230, -75.4795}, {40.6290, -75.4815}, {40.6340, -75.4826}})
      .Stop(kErrand)
      .Streets(kMainStreet, {{40.6390, -75.4836}, {40.6434, -75.4838}})
      .Highway(kExpressway,
               {{40.6455, -75.4700}, {40.6478, -75.4480}, {40.6510, -75.4250}, {40.6540, -75.4070}})
      .Streets(kMainStreet, {{40.6472, -75.3962}, {40.6398, -75.3921}, {40.6290, -75.3846}})
      .Streets(kTownStreet, {{40.6225, -75.3817}, {40.6190, -75.3815}})
      .Highway(kMainStreet, {{40.6166, -75.3835}, {40.6140, -75.3842}, {40.6112, -75.3846}})
      .Streets(kTownStreet, {{40.6104, -75.3820}, {40.6096, -75.3780}})
      .Stop(kErrand)
      .Take();
}

Path BethlehemToPhillyAirport() {
  return PathBuilder({40.6218, -75.3790})
      .Streets(kTownStreet, {{40.6225, -75.3817}, {40.6252, -75.3870}})
      .Highway(kExpressway, {{40.6350, -75.3960}, {40.6450, -75.4050}, {40.6520, -75.4180}})
      .Highway(kExpressway, {{40.6480, -75.4480},
                             {40.6438, -75.4838},
                             {40.6340, -75.5100},
                             {40.6210, -75.5400},
                             {40.6040, -75.5580}})
      .Highway(kInterstate, {{40.5880, -75.5600},
                             {40.5640, -75.5540},
                             {40.5380, -75.5340},
                             {40.5060, -75.5060},
                             {40.4700, -75.4620},
                             {40.4380, -75.4330},
                             {40.3960, -75.4110},
                             {40.3480, -75.3960},
                             {40.2980, -75.3720},
                             {40.2560, -75.3420},
                             {40.2270, -75.3270}})
      .Highway(kInterstate, {{40.1980, -75.3160},
                             {40.1560, -75.2960},
                             {40.1220, -75.2830},
                             {40.1027, -75.2857},
                             {40.0840, -75.3070}})
      .Highway(kExpressway, {{40.0660, -75.3180},
                             {40.0440, -75.3470},
                             {40.0200, -75.3600},
                             {39.9860, -75.3640},
                             {39.9520, -75.3570},
                             {39.9170, -75.3500},
                             {39.8850, -75.3500},
                             {39.8640, -75.3430}})
      .Highway(kExpressway,
               {{39.8620, -75.3230}, {39.8660, -75.2990}, {39.8720, -75.2740}, {39.8760, -75.2560}})
      .Streets(kMainStreet, {{39.8752, -75.2480}, {39.8744, -75.2424}})
      .Stop(kErrand)
      .Take();
}

namespace {

// Interstates 30 and 40 through Arkansas.
void DallasToBrinkley(PathBuilder& path) {
  path.Streets(kMainStreet, {{32.7800, -96.7890}, {32.7830, -96.7790}})
      .Highway(kInterstate, {{32.7950, -96.7300},
                             {32.8250, -96.6600},
                             {32.8600, -96.5700},
                             {32.9050, -96.4800},
                             {32.9390, -96.4000},
                             {32.9800, -96.3100},
                             {33.0350, -96.2000},
                             {33.0850, -96.1100}})
      .Highway(kOpenInterstate, {{33.1150, -95.9800},
                                 {33.1290, -95.8200},
                                 {33.1190, -95.6010},
                                 {33.1440, -95.4200},
                                 {33.1720, -95.2220},
                                 {33.1700, -94.9700}})
      .Stop(kRest)
      .Highway(kOpenInterstate, {{33.2300, -94.7900},
                                 {33.3300, -94.6200},
                                 {33.4550, -94.4150},
                                 {33.4640, -94.2000},
                                 {33.4640, -94.0400},
                                 {33.5500, -93.8400},
                                 {33.6850, -93.5900},
                                 {33.8130, -93.3800},
                                 {33.9800, -93.2200},
                                 {34.1150, -93.1000},
                                 {34.2600, -92.9600},
                                 {34.3750, -92.8300},
                                 {34.4800, -92.7000},
                                 {34.5700, -92.5900}})
      .Highway(kInterstate,
               {{34.6500, -92.4500}, {34.7050, -92.3500}, {34.7380, -92.2700}, {34.7700, -92.2400}})
      .Highway(kOpenInterstate, {{34.7900, -92.1300},
                                 {34.8020, -91.9000},
                                 {34.8080, -91.5800},
                                 {34.8420, -91.3700},
                                 {34.9050, -91.1900}})
      .Stop(kRest);
}

// Interstate 40 through Memphis.
void BrinkleyToNashville(PathBuilder& path) {
  path.Highway(kOpenInterstate, {{34.9550, -91.0000},
                                 {35.0300, -90.7900},
                                 {35.0900, -90.5600},
                                 {35.1400, -90.3500},
                                 {35.1560, -90.1900}})
      .Highway(kExpressway, {{35.1530, -90.0950},
                             {35.1525, -90.0650},
                             {35.1560, -90.0400},
                             {35.1780, -90.0150},
                             {35.1890, -89.9700}})
      .Highway(kInterstate, {{35.1700, -89.9000},
                             {35.2000, -89.8200},
                             {35.2780, -89.6600},
                             {35.4000, -89.4600},
                             {35.5450, -89.2600},
                             {35.6200, -89.0500},
                             {35.6650, -88.8300}})
      .Stop(kRest)
      .Highway(kOpenInterstate, {{35.7200, -88.6000},
                                 {35.7950, -88.4000},
                                 {35.8400, -88.1800},
                                 {35.8700, -87.9950},
                                 {35.8850, -87.8500},
                                 {35.9200, -87.6800},
                                 {35.9800, -87.5000},
                                 {36.0200, -87.3500},
                                 {36.0600, -87.2200},
                                 {36.0850, -87.1200}})
      .Highway(kInterstate,
               {{36.0800, -86.9700}, {36.1150, -86.8900}, {36.1500, -86.8400}, {36.1560, -86.8000}})
      .Streets(kMainStreet, {{36.1600, -86.7900}, {36.1627, -86.7816}})
      .Stop(kErrand);
}

}  // namespace

Path DallasToNashville() {
  PathBuilder path({32.7767, -96.7970});
  DallasToBrinkley(path);
  BrinkleyToNashville(path);
  return path.Take();
}

namespace {

// Interstates 40 and 81 through Tennessee.
void NashvilleToVirginia(PathBuilder& path) {
  path.Streets(kMainStreet, {{36.1590, -86.7740}, {36.1530, -86.7660}})
      .Highway(kInterstate,
               {{36.1480, -86.7000}, {36.1650, -86.6000}, {36.1760, -86.4500}, {36.1800, -86.3000}})
      .Highway(kOpenInterstate, {{36.1500, -86.1200},
                                 {36.1350, -85.9400},
                                 {36.1150, -85.7800},
                                 {36.1400, -85.5000},
                                 {36.0900, -85.2800},
                                 {35.9750, -85.0300}})
      .Stop(kRest)
      .Highway(kOpenInterstate, {{35.9200, -84.8500},
                                 {35.8800, -84.7000},
                                 {35.8900, -84.5500},
                                 {35.8700, -84.3900},
                                 {35.8900, -84.2400}})
      .Highway(kInterstate, {{35.9300, -84.0800},
                             {35.9550, -83.9300},
                             {35.9900, -83.7800},
                             {35.9950, -83.6000},
                             {36.0100, -83.4200}})
      .Highway(kOpenInterstate, {{36.1100, -83.2700},
                                 {36.2300, -83.0700},
                                 {36.3300, -82.8500},
                                 {36.4700, -82.5200},
                                 {36.5400, -82.3200},
                                 {36.6100, -82.1500},
                                 {36.7050, -81.9700}})
      .Stop(kRest);
}

// Interstates 81 and 78.
void VirginiaToBethlehem(PathBuilder& path) {
  path.Highway(kOpenInterstate, {{36.7800, -81.7300},
                                 {36.8400, -81.5200},
                                 {36.9000, -81.3000},
                                 {36.9550, -81.0800},
                                 {37.0000, -80.8900},
                                 {37.0600, -80.7200},
                                 {37.1500, -80.4200},
                                 {37.2500, -80.2300},
                                 {37.3100, -80.0700},
                                 {37.4200, -79.8800},
                                 {37.5300, -79.6800},
                                 {37.6500, -79.5600},
                                 {37.7900, -79.4100}})
      .Stop(kRest)
      .Highway(kOpenInterstate, {{37.9300, -79.2300},
                                 {38.1300, -79.0400},
                                 {38.2900, -78.9300},
                                 {38.4300, -78.8600},
                                 {38.6450, -78.6700},
                                 {38.8000, -78.5500},
                                 {38.9900, -78.3500},
                                 {39.1700, -78.1400},
                                 {39.3300, -78.0500},
                                 {39.4700, -77.9700},
                                 {39.6400, -77.7600}})
      .Stop(kRest)
      .Highway(kInterstate, {{39.7700, -77.7200},
                             {39.9300, -77.6400},
                             {40.0800, -77.4200},
                             {40.2200, -77.1500},
                             {40.2900, -77.0200},
                             {40.3200, -76.9000},
                             {40.3450, -76.7600},
                             {40.3900, -76.6400},
                             {40.4360, -76.5340}})
      .Highway(kInterstate, {{40.4650, -76.2900},
                             {40.5100, -76.1300},
                             {40.5480, -75.9950},
                             {40.5730, -75.8830},
                             {40.5680, -75.7700},
                             {40.5850, -75.6250},
                             {40.5790, -75.5500},
                             {40.5650, -75.4900},
                             {40.5560, -75.4250},
                             {40.5760, -75.3850}})
      .Highway(kMainStreet, {{40.5870, -75.3800}, {40.5990, -75.3860}, {40.6080, -75.3846}})
      .Streets(kTownStreet,
               {{40.6104, -75.3820}, {40.6150, -75.3797}, {40.6190, -75.3790}, {40.6218, -75.3790}})
      .Stop(kErrand);
}

}  // namespace

Path NashvilleToBethlehem() {
  PathBuilder path({36.1627, -86.7816});
  NashvilleToVirginia(path);
  VirginiaToBethlehem(path);
  return path.Take();
}

Path AcrossWisconsin() {
  return PathBuilder({44.9720, -92.7560})
      .Streets(kMainStreet, {{44.9690, -92.7480}, {44.9640, -92.7400}})
      .Highway(kOpenInterstate, {{44.9620, -92.6500},
                                 {44.9500, -92.4500},
                                 {44.9350, -92.2200},
                                 {44.9100, -91.9300},
                                 {44.8600, -91.7000},
                                 {44.7700, -91.4700}})
      .Stop(kErrand)
      .Highway(kOpenInterstate, {{44.7100, -91.3500},
                                 {44.5900, -91.2100},
                                 {44.4400, -91.0400},
                                 {44.3000, -90.8300},
                                 {44.1500, -90.6600},
                                 {44.0000, -90.4900},
                                 {43.9300, -90.2700},
                                 {43.8000, -90.0600}})
      .Stop(kRest)
      .Highway(kOpenInterstate, {{43.7100, -89.9200},
                                 {43.6200, -89.8000},
                                 {43.5500, -89.6300},
                                 {43.5000, -89.4900},
                                 {43.3800, -89.4000},
                                 {43.2600, -89.3500},
                                 {43.1400, -89.2900}})
      .Stop(kErrand)
      .Highway(kOpenInterstate, {{43.1000, -89.1800},
                                 {43.0850, -88.9100},
                                 {43.0750, -88.7000},
                                 {43.0900, -88.4800},
                                 {43.0650, -88.3300},
                                 {43.0500, -88.2000}})
      .Highway(kExpressway,
               {{43.0340, -88.0800}, {43.0280, -88.0200}, {43.0330, -87.9600}, {43.0360, -87.9250}})
      .Streets(kMainStreet, {{43.0385, -87.9200}, {43.0389, -87.9065}})
      .Stop(kErrand)
      .Take();
}

Path MinneapolisTour() {
  const TownGrid& town = kMinneapolis;
  PathBuilder path({44.9778, -93.2650});
  path.Streets(kTownStreet, {{44.9752, -93.2700}, {44.9722, -93.2760}, {44.9660, -93.2779}});
  path.Streets(kMainStreet, town.At({{0, 4}, {0, 2}, {0, 0}})).Stop(kErrand);
  path.Streets(kMainStreet, town.At({{3, 0}, {6, 0}, {6, -2}, {6, -5}})).Stop(kErrand);
  path.Streets(kMainStreet, town.At({{9, -5}, {12, -5}, {12, -8}, {12, -12}, {14, -14}})).Stop(kErrand);
  path.Highway(kExpressway, {{44.9080, -93.2210}, {44.8960, -93.2150}, {44.8880, -93.2080}});
  path.Streets(kMainStreet, {{44.8835, -93.2115}, {44.8815, -93.2060}}).Stop(kErrand);
  path.Highway(kExpressway, {{44.8700, -93.2110},
                             {44.8618, -93.2260},
                             {44.8612, -93.2600},
                             {44.8615, -93.2990},
                             {44.8640, -93.3400}})
      .Highway(kExpressway,
               {{44.8800, -93.3530}, {44.9060, -93.3500}, {44.9300, -93.3480}, {44.9420, -93.3470}});
  path.Streets(kMainStreet,
               {{44.9485, -93.3420}, {44.9490, -93.3260}, {44.9483, -93.3080}, {44.9483, -93.2985}});
  path.Stop(kErrand);
  path.Streets(kMainStreet, {{44.9560, -93.2960}, {44.9627, -93.2925}, {44.9680, -93.2880}});
  return path.Streets(kTownStreet, {{44.9735, -93.2820}, {44.9790, -93.2745}, {44.9778, -93.2650}})
      .Stop(kErrand)
      .Take();
}

}  // namespace pallomir::station
