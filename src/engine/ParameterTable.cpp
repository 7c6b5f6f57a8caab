// ParameterTable - 22 parameters by id, and one usage row for each projection.
#include "engine/ParameterTable.h"

namespace orvex::detail {

namespace {

// clang-format off
constexpr std::array<ParameterRow, 22> kParameters{{
    { 1, "Projection",                        PDT_PROJTYPE,  offsetof(PROJDATA, Type),       sizeof(PROJDATA::Type)},
    { 2, "Scale",                             PDT_DOUBLE,    offsetof(PROJDATA, Scale),      sizeof(PROJDATA::Scale)},
    { 3, "False Easting",                     PDT_DOUBLE,    offsetof(PROJDATA, xOrg),       sizeof(PROJDATA::xOrg)},
    { 4, "False Northing",                    PDT_DOUBLE,    offsetof(PROJDATA, yOrg),       sizeof(PROJDATA::yOrg)},
    { 5, "Central Latitude",                  PDT_DOUBLE,    offsetof(PROJDATA, Lat0),       sizeof(PROJDATA::Lat0)},
    { 6, "Central Longitude",                 PDT_DOUBLE,    offsetof(PROJDATA, Lon0),       sizeof(PROJDATA::Lon0)},
    { 7, "Standard Parallel",                 PDT_DOUBLE,    offsetof(PROJDATA, Lat1),       sizeof(PROJDATA::Lat1)},
    { 8, "2nd Standard Parallel",             PDT_DOUBLE,    offsetof(PROJDATA, Lat2),       sizeof(PROJDATA::Lat2)},
    { 9, "3rd Standard Parallel",             PDT_DOUBLE,    offsetof(PROJDATA, Lat3),       sizeof(PROJDATA::Lat3)},
    {10, "1st Meridian",                      PDT_DOUBLE,    offsetof(PROJDATA, Lon1),       sizeof(PROJDATA::Lon1)},
    {11, "2nd Meridian",                      PDT_DOUBLE,    offsetof(PROJDATA, Lon2),       sizeof(PROJDATA::Lon2)},
    {12, "3rd Meridian",                      PDT_DOUBLE,    offsetof(PROJDATA, Lon3),       sizeof(PROJDATA::Lon3)},
    {13, "Central Scale Factor (K0)",         PDT_DOUBLE,    offsetof(PROJDATA, K0),         sizeof(PROJDATA::K0)},
    {14, "Projection in Southern Hemisphere", PDT_BOOL,      offsetof(PROJDATA, bSouth),     sizeof(PROJDATA::bSouth)},
    {15, "State Zone",                        PDT_STATEZONE, offsetof(PROJDATA, Zone),       sizeof(PROJDATA::Zone)},
    {16, "Use Alpha Parameter",               PDT_BOOL,      offsetof(PROJDATA, bUseAlpha),  sizeof(PROJDATA::bUseAlpha)},
    {17, "Alpha (Azimuth)",                   PDT_DOUBLE,    offsetof(PROJDATA, Alpha),      sizeof(PROJDATA::Alpha)},
    {18, "Rotate U/V to X/Y",                 PDT_BOOL,      offsetof(PROJDATA, bRotate),    sizeof(PROJDATA::bRotate)},
    {19, "Offset by U",                       PDT_BOOL,      offsetof(PROJDATA, bUOffset),   sizeof(PROJDATA::bUOffset)},
    {20, "Ellipsoid",                         PDT_ELLIPSOID, offsetof(PROJDATA, Ellipsoid),  sizeof(PROJDATA::Ellipsoid)},
    {21, "Ellipsoid Radius (meters)",         PDT_DOUBLE,    offsetof(PROJDATA, MajorRadius),sizeof(PROJDATA::MajorRadius)},
    {22, "Ellipsoid Flattening",              PDT_DOUBLE,    offsetof(PROJDATA, Flattening), sizeof(PROJDATA::Flattening)},
}};

// The order of the ids is the order of display. On purpose: Robinson has no central longitude here, UTM no false origin (it is
// filled in when a handle is made), the state plane types nothing but scale and zone.
constexpr std::array<UsageRow, 29> kUsage{{
    {PT_LATLONG,            {}},
    {PT_ALBERS,             {20, 2, 3, 4, 6, 5, 7, 8}},
    {PT_BONNE,              {20, 2, 3, 4, 6, 7}},
    {PT_CASSINI,            {20, 2, 3, 4, 5, 6}},
    {PT_ECKERT4,            {20, 2, 3, 4, 6}},
    {PT_ECKERT6,            {20, 2, 3, 4, 6}},
    {PT_EQUICYLINDRICAL,    {20, 2, 3, 4, 6, 7}},
    {PT_GAUSSKRUGER,        {20, 2, 3, 4, 13, 6, 5}},
    {PT_HOTINE,             {20, 2, 3, 4, 13, 16, 6, 17, 5, 7, 10, 8, 11, 18, 19}},
    {PT_LAMBERT,            {20, 2, 3, 4, 6, 5, 7, 8}},
    {PT_LAMBERTAZIMUTHAL,   {20, 2, 3, 4, 6, 7}},
    {PT_MERCATOR,           {20, 2, 3, 4, 6, 5}},
    {PT_MILLER,             {20, 2, 3, 4, 6}},
    {PT_MOLLWEIDE,          {20, 2, 3, 4, 6}},
    {PT_OBLIQUEMERCATOR,    {20, 2, 3, 4, 10, 7, 11, 8, 13}},
    {PT_ORTHOGRAPHIC,       {20, 2, 3, 4, 6, 5}},
    {PT_STEREOGRAPHIC,      {20, 2, 3, 4, 13, 6, 5}},
    {PT_POLYCONIC,          {20, 2, 3, 4, 6, 5}},
    {PT_ROBINSON,           {20, 2, 3, 4}},
    {PT_ROBINSONSTERLING,   {20, 2, 3, 4, 6}},
    {PT_SINUSOIDAL,         {20, 2, 3, 4, 6}},
    {PT_STATEPLANE27,       {2, 15}},
    {PT_STATEPLANE83,       {2, 15}},
    {PT_TRANSVERSEMERCATOR, {20, 2, 3, 4, 13, 6, 5}},
    {PT_UTM,                {20, 2, 13, 6, 5, 14}},
    {PT_VANDERGRINTEN,      {20, 2, 3, 4, 6}},
    {PT_EQUICONIC,          {20, 2, 3, 4, 6, 5, 7, 8}},
    {PT_GNOMONIC,           {20, 2, 3, 4, 6, 7}},
    {PT_AZIMUTHALEQUI,      {20, 2, 3, 4, 6, 7}},
}};
// clang-format on

constexpr std::size_t SizeOf(ProjDataType type) {
  return type == PDT_DOUBLE ? 8 : type == PDT_BOOL ? 1 : 4;
}

constexpr bool NumberedFromOneAndSized() {
  int id = 0;
  for (const ParameterRow& row : kParameters) {
    if (row.id != ++id || row.size != SizeOf(row.type) || row.offset + row.size > offsetof(PROJDATA, iResult))
      return false;
  }
  return true;
}

/// Each projection once, each list closed by 0, each id a parameter and listed once.
constexpr bool UsageConsistent() {
  std::array<int, 29> seen{};
  for (const UsageRow& row : kUsage) {
    if (++seen.at(static_cast<std::size_t>(row.type)) != 1 || row.ids.back() != 0) return false;
    std::array<int, 23> listed{};
    for (const std::uint8_t id : row.ids) {
      if (id != 0 && ++listed.at(id) != 1) return false;
    }
  }
  return true;
}

}  // namespace

static_assert(NumberedFromOneAndSized());
static_assert(UsageConsistent());
static_assert(kParameters[14].offset == 101 && kParameters[14].type == PDT_STATEZONE);

std::span<const ParameterRow> Parameters() {
  return kParameters;
}

std::span<const UsageRow> ParameterUsage() {
  return kUsage;
}

}  // namespace orvex::detail
