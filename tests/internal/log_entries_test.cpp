// What the log says of calls: every exported function's name and arguments, failed conversions, and nothing at all,
// not even a formatted text, while it is off.
#include <cxxabi.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <orvex/orvex.h>
#include <orvex/orvex_c.h>
#include <shr/exception.h>

#include "datum/grids/Ntv2.h"
#include "support/GridFiles.h"
#include "support/Log.h"

#if !defined(_WIN32)
#include "Faults.h"
#endif
#if defined(__linux__)
#include <fenv.h>
#endif

namespace orvex::test {
namespace {

/// A call and the first line it logs; @ stands for null pointers.
struct Entry {
  const char* line;
  void (*call)();
};

const auto kZone = static_cast<StateZoneType>(3);
const auto kType = static_cast<ProjType>(40);  // outside the table
const auto kEllipsoid = static_cast<EllipsoidType>(47);
const auto kDatum = static_cast<DatumType>(3);

const Entry kEntries[] = {
    {"ProjNumProjections()", [] { ProjNumProjections(); }},
    {"ProjGetProjectionInfo(type=40, name=@)", [] { ProjGetProjectionInfo(kType, nullptr); }},
    {"ProjCheckParams called with:", [] { ProjCheckParams(nullptr, nullptr, false); }},
    {"ProjCreateProjection(pProjData=@)", [] { ProjCreateProjection(nullptr); }},
    {"ProjDeleteProjection(hProj=@)", [] { ProjDeleteProjection(nullptr); }},
    {"ProjGetHandleInfo(hProj=@, pProjData=@)", [] { ProjGetHandleInfo(nullptr, nullptr); }},
    {"ProjSetAccuracy(hProj=@, accuracy=1)", [] { ProjSetAccuracy(nullptr, PA_EXACT); }},
    {"ProjGetAccuracy(hProj=@)", [] { ProjGetAccuracy(nullptr); }},
    {"ProjResult(hProj=@)", [] { ProjResult(nullptr); }},
    {"ProjForward(hProj=@, pPts=@, nPts=7)", [] { ProjForward(nullptr, nullptr, 7); }},
    {"ProjInverse(hProj=@, pPts=@, nPts=7)", [] { ProjInverse(nullptr, nullptr, 7); }},
    {"ProjForwardColumns(hProj=@, lon=@, lat=@, x=@, y=@, nPts=7)",
     [] { ProjForwardColumns(nullptr, nullptr, nullptr, nullptr, nullptr, 7); }},
    {"ProjInverseColumns(hProj=@, x=@, y=@, lon=@, lat=@, nPts=7)",
     [] { ProjInverseColumns(nullptr, nullptr, nullptr, nullptr, nullptr, 7); }},
    {"ProjNumParams(type=40)", [] { ProjNumParams(kType); }},
    {"ProjEnumParam(type=40, index=2)", [] { ProjEnumParam(kType, 2); }},
    {"ProjUsesParam(type=40, paramId=2)", [] { ProjUsesParam(kType, 2); }},
    {"ProjParamInfo(paramId=2, name=@, type=@, offset=@, size=@)",
     [] { ProjParamInfo(2, nullptr, nullptr, nullptr, nullptr); }},
    {"ProjGetParam(pData=@, paramId=2, value=@)", [] { ProjGetParam(nullptr, 2, nullptr); }},
    {"ProjSetParam(pData=@, paramId=2, value=@)", [] { ProjSetParam(nullptr, 2, nullptr); }},
    {"ProjGetStateZoneInfo(zone=3, name=@, usgsCode=@)", [] { ProjGetStateZoneInfo(kZone, nullptr, nullptr); }},
    {"ProjGetStateZoneFromName(zone=@, name=\"Guam\")", [] { ProjGetStateZoneFromName(nullptr, "Guam"); }},
    {"ProjGetStateZoneFromUSGSCode(zone=@, code=101)", [] { ProjGetStateZoneFromUSGSCode(nullptr, 101); }},
    {"ProjGetStateZoneFromPOSCNumber(posc=26929, type=@, zone=@)",
     [] { ProjGetStateZoneFromPOSCNumber(26929, nullptr, nullptr); }},
    {"ProjStateZoneToPOSCNumber(type=10, zone=3, posc=@)",
     [] { ProjStateZoneToPOSCNumber(PT_STATEPLANE83, kZone, nullptr); }},
    {"ProjGetStateZoneParams(pData=@)", [] { ProjGetStateZoneParams(nullptr); }},
    {"ProjUTMZoneNumberToName(zone=-5, south=true, name=@, nameLen=9, format=1)",
     [] { ProjUTMZoneNumberToName(-5, true, nullptr, 9, UTMZN_LETTERS); }},
    {"ProjUTMZoneNameToNumber(name=\"(null)\", zone=@, south=@)",
     [] { ProjUTMZoneNameToNumber(nullptr, nullptr, nullptr); }},
    {"ProjUTMLonToZoneNumber(lon=-0.500000)", [] { ProjUTMLonToZoneNumber(-0.5); }},
    {"ProjUTMZoneNumberToLon(zone=33)", [] { ProjUTMZoneNumberToLon(33); }},
    {"ProjLLInProjection(hProj=@, pPt=@)", [] { ProjLLInProjection(nullptr, nullptr); }},
    {"ProjLLInProjection(hProj=@, nPts=4, pPts=@)", [] { ProjLLInProjection(nullptr, 4, nullptr); }},
    {"ProjLLOffsetSplitObject(hProj=@, pPts=@, nPts=4, pdx=@, pdy=@)",
     [] { ProjLLOffsetSplitObject(nullptr, nullptr, 4, nullptr, nullptr); }},
    {"ProjLLPreclipPolyline(hProj=@, pUser=@, nPts=4, pPts=@, pLine=@)",
     [] { ProjLLPreclipPolyline(nullptr, nullptr, 4, nullptr, nullptr); }},
    {"ProjLLPreclipPolygon(hProj=@, pUser=@, nParts=4, pCounts=@, pPts=@, pFill=@, pLine=@)",
     [] { ProjLLPreclipPolygon(nullptr, nullptr, 4, nullptr, nullptr, nullptr, nullptr); }},
    {"LatLonToDegrees(text=\"12d S\", degrees=@, degreeChar=100)", [] { LatLonToDegrees("12d S", nullptr, 'd'); }},
    {"DegreesToLatLon(text=@, degrees=-1.250000, format=4096, degSep=100, minSep=39, secSep=0)",
     [] { DegreesToLatLon(nullptr, -1.25, LLF_HEMISPHERE, 'd', '\'', '\0'); }},
    {"EllipsoidInfo(type=47, name=@, radius=@, flattening=@)",
     [] { EllipsoidInfo(kEllipsoid, nullptr, nullptr, nullptr); }},
    {"EllipsoidRadius(type=47)", [] { EllipsoidRadius(kEllipsoid); }},
    {"EllipsoidFlattening(type=47)", [] { EllipsoidFlattening(kEllipsoid); }},
    {"EllipsoidFromName(type=@, name=\"WGS 84\")", [] { EllipsoidFromName(nullptr, "WGS 84"); }},
    {"EllipsoidFromPOSCNumber(posc=7030, type=@)", [] { EllipsoidFromPOSCNumber(7030, nullptr); }},
    {"EllipsoidToPOSCNumber(type=47, posc=@)", [] { EllipsoidToPOSCNumber(kEllipsoid, nullptr); }},
    {"DatNumDatums()", [] { DatNumDatums(); }},
    {"DatGetDatumName(datum=3, name=@)", [] { DatGetDatumName(kDatum, nullptr); }},
    {"DatGetDatumFromName(datum=@, name=\"Tokyo\")", [] { DatGetDatumFromName(nullptr, "Tokyo"); }},
    {"DatGetDatumPOSCNumber(datum=3, posc=@)", [] { DatGetDatumPOSCNumber(kDatum, nullptr); }},
    {"DatGetDatumFromPOSCNumber(datum=@, posc=6326)", [] { DatGetDatumFromPOSCNumber(nullptr, 6326); }},
    {"DatGetDatumMethod(datum=3, method=@)", [] { DatGetDatumMethod(kDatum, nullptr); }},
    {"DatReversible(datum=3)", [] { DatReversible(kDatum); }},
    {"DatGetDatumParams(datum=3, params=@)", [] { DatGetDatumParams(kDatum, nullptr); }},
    {"DatCheckParams(xform=@, text=@, bThrow=true)", [] { DatCheckParams(nullptr, nullptr, true); }},
    {"DatCreateDatum(pDatumData=@)", [] { DatCreateDatum(nullptr); }},
    {"DatDeleteDatum(hDatum=@)", [] { DatDeleteDatum(nullptr); }},
    {"DatConvertDatum(hDatum=@, pPts=@, nPts=7)", [] { DatConvertDatum(nullptr, nullptr, 7); }},
    {"DatConvertColumns(hDatum=@, fromLon=@, fromLat=@, toLon=@, toLat=@, nPts=7)",
     [] { DatConvertColumns(nullptr, nullptr, nullptr, nullptr, nullptr, 7); }},
    {"DatGetHandleInfo(hDatum=@, pDatumData=@)", [] { DatGetHandleInfo(nullptr, nullptr); }},
    {"DatSetAccuracy(hDatum=@, accuracy=7)", [] { DatSetAccuracy(nullptr, static_cast<ProjAccuracy>(7)); }},
    {"DatGetAccuracy(hDatum=@)", [] { DatGetAccuracy(nullptr); }},
    {"DatHadUnplottables(hDatum=@)", [] { DatHadUnplottables(nullptr); }},
    {"DatSetGridDirectory(directory=\"(null)\")", [] { DatSetGridDirectory(nullptr); }},
    {"NDatNumDatums(ini=\"(null)\")", [] { NDatNumDatums(nullptr); }},
    {"NDatEnumDatumName(ini=\"(null)\", name=@, index=3)", [] { NDatEnumDatumName(nullptr, nullptr, 3); }},
    {"NDatExists(ini=\"(null)\", name=\"Tokyo\", index=@)", [] { NDatExists(nullptr, "Tokyo", nullptr); }},
    {"NDatIsBuiltIn(ini=\"(null)\", name=\"Tokyo\", datum=@)", [] { NDatIsBuiltIn(nullptr, "Tokyo", nullptr); }},
    {"NDatGetDatumParams(ini=\"(null)\", name=\"Tokyo\", params=@)",
     [] { NDatGetDatumParams(nullptr, "Tokyo", nullptr); }},
    {"NDatGetDatumMethod(ini=\"(null)\", name=\"Tokyo\", method=@)",
     [] { NDatGetDatumMethod(nullptr, "Tokyo", nullptr); }},
    {"NDatReversible(ini=\"(null)\", name=\"Tokyo\")", [] { NDatReversible(nullptr, "Tokyo"); }},
    {"NDatSave(ini=\"(null)\", name=\"New\", params=@)", [] { NDatSave(nullptr, "New", nullptr); }},
    {"NDatDelete(ini=\"(null)\", name=\"New\")", [] { NDatDelete(nullptr, "New"); }},
    {"RefAllocControls(pRefData=@, nControls=3)", [] { RefAllocControls(nullptr, 3); }},
    {"RefFreeControls(@)", [] { RefFreeControls(nullptr); }},
    {"RefCreateSystem(pRefData=@)", [] { RefCreateSystem(nullptr); }},
    {"RefDeleteSystem(hRef=@)", [] { RefDeleteSystem(nullptr); }},
    {"RefForward(hRef=@, pPts=@, nPts=3)", [] { RefForward(nullptr, nullptr, 3); }},
    {"RefGetHandleInfo(hRef=@, pGeoRef=@)", [] { RefGetHandleInfo(nullptr, nullptr); }},
    {"fefComputeError(hRef=@, pTotalError=@, pControlError=@)", [] { RefComputeError(nullptr, nullptr, nullptr); }},
    {"RefCoeffToControls(pRefData=@)", [] { RefControlsToCoeff(nullptr); }},  // the other function's name, on purpose
    {"RefCoeffToControls(pRefData=@, iWidth=3, iHeight=4)", [] { RefCoeffToControls(nullptr, 3, 4); }},
    {"RefResize(pRefData=@, iOldW=1, iOldH=2, iNewW=3, iNewH=4)", [] { RefResize(nullptr, 1, 2, 3, 4); }},
    {"RefMethodName(Method=8)", [] { RefMethodName(RM_MARCOV); }},
    {"orvex_projection_number(name=\"x\", number=@)", [] { orvex_projection_number("x", nullptr); }},
    {"orvex_ellipsoid_number(name=\"x\", number=@)", [] { orvex_ellipsoid_number("x", nullptr); }},
    {"orvex_datum_number(name=\"x\", number=@)", [] { orvex_datum_number("x", nullptr); }},
    {"orvex_create(record=@, projection=@, message=@)", [] { orvex_create(nullptr, nullptr, nullptr); }},
    {"orvex_set_accuracy(projection=@, accuracy=1)", [] { orvex_set_accuracy(nullptr, 1); }},
    {"orvex_delete(projection=@)", [] { orvex_delete(nullptr); }},
    {"orvex_forward(projection=@, points=@, count=5, message=@)", [] { orvex_forward(nullptr, nullptr, 5, nullptr); }},
    {"orvex_inverse(projection=@, points=@, count=5, message=@)", [] { orvex_inverse(nullptr, nullptr, 5, nullptr); }},
    {"orvex_forward_columns(projection=@, lon=@, lat=@, x=@, y=@, count=5, message=@)",
     [] { orvex_forward_columns(nullptr, nullptr, nullptr, nullptr, nullptr, 5, nullptr); }},
    {"orvex_inverse_columns(projection=@, x=@, y=@, lon=@, lat=@, count=5, message=@)",
     [] { orvex_inverse_columns(nullptr, nullptr, nullptr, nullptr, nullptr, 5, nullptr); }},
    {"orvex_datum_convert_columns(datum=@, from_lon=@, from_lat=@, to_lon=@, to_lat=@, count=5, message=@)",
     [] { orvex_datum_convert_columns(nullptr, nullptr, nullptr, nullptr, nullptr, 5, nullptr); }},
    {"orvex_datum_create(source=1, destination=2, datum=@, message=@)",
     [] { orvex_datum_create(1, 2, nullptr, nullptr); }},
    {"orvex_datum_set_accuracy(datum=@, accuracy=0)", [] { orvex_datum_set_accuracy(nullptr, 0); }},
    {"orvex_datum_delete(datum=@)", [] { orvex_datum_delete(nullptr); }},
    {"orvex_datum_convert(datum=@, points=@, count=5, message=@)",
     [] { orvex_datum_convert(nullptr, nullptr, 5, nullptr); }},
};

/// Lines that calls log, without the mark of the trace, addresses as @.
template <class Calls>
std::vector<std::string> Logged(Calls calls) {
  const TemporaryDirectory directory;
  const std::string file = (directory / "test.log").string();
  detail::LogSetup(true, file.c_str());
  try {
    calls();
  } catch (const shr::Exception&) {  // bad arguments are bad arguments
  }
  detail::LogSetup(false, nullptr);
  char null[32];
  std::snprintf(null, sizeof null, "%p", static_cast<void*>(nullptr));
  std::istringstream log(ReadWholeFile(file));
  std::vector<std::string> lines;
  for (std::string line; std::getline(log, line);) {
    line.pop_back();
    if (line.starts_with("CTRACE:  ")) line.erase(0, 9);
    for (std::size_t at = line.find(null); at != line.npos; at = line.find(null)) {
      line.replace(at, std::strlen(null), "@");
    }
    lines.push_back(line);
  }
  return lines;
}

TEST(LogEntries, NameTheFunctionAndItsArguments) {
  for (const Entry& entry : kEntries) {
    const std::vector<std::string> lines = Logged(entry.call);
    ASSERT_FALSE(lines.empty()) << entry.line;
    EXPECT_EQ(lines.front(), entry.line);
  }
}

// The table above holds every function that is exported.
TEST(LogEntries, NoFunctionIsLeftOut) {
  std::set<std::string> named{"RefControlsToCoeff", "RefComputeError"};  // those that log under another name
  for (const Entry& entry : kEntries) {
    const std::string line = entry.line;
    named.insert(line.substr(0, line.find_first_of("( ")));
  }
  std::ifstream list(ORVEX_SOURCE_DIR "/tests/windows/exports32.txt");
  int functions = 0;
  for (std::string symbol; std::getline(list, symbol); ++functions) {
    int status = 0;
    char* const demangled = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status);
    std::string name = demangled != nullptr ? demangled : symbol;
    std::free(demangled);
    name = name.substr(0, name.find('('));
    if (name.starts_with("orvex::")) name.erase(0, 7);
    if (name.find(':') != name.npos || name.find(' ') != name.npos) continue;  // members, tables, type information
    EXPECT_TRUE(named.contains(name)) << name;
  }
  EXPECT_GT(functions, 100);
}

#if !defined(_WIN32)
void Quietly(void (*call)()) {
  try {
    call();
  } catch (const shr::Exception&) {
  }
}

TEST(LogEntries, NothingIsFormattedWhileTheLogIsOff) {
  const long before = FormattedTexts();
  for (const Entry& entry : kEntries) Quietly(entry.call);
  PROJDATA record{};
  record.Type = PT_STATEPLANE83;
  record.Zone = SZ_TEXAS_CENTRAL;
  record.Ellipsoid = ET_GRS_1980_IUGG_1980;
  DATUMXFORM xform{};
  xform.SrcDatum = DT_TOKYO;
  PROJPOINT line[] = {{-99, 31}, {300, 31}};
  DATUMPOINT place{139, 36};
  CProjector projector(&record);
  projector.Forward(line, 2);
  projector.LLPreclipPolyline(nullptr, 2, line, [](void*, int, PROJPOINT*) { return false; });
  CDatumTransform(&xform).Convert(&place, 1);
  EXPECT_EQ(FormattedTexts(), before);
  EXPECT_FALSE(Logged([&] { projector.Result(); }).empty());
  EXPECT_EQ(FormattedTexts(), before + 1);
}
#endif

#if defined(__linux__)
#if defined(__x86_64__)  // others have no traps, or none under emulation
TEST(LogEntries, FailedProjectionsSaySo) {
  PROJDATA sphere{};
  sphere.Type = PT_TRANSVERSEMERCATOR;
  sphere.MajorRadius = 1;
  CProjector projector(&sphere);
  PROJPOINT pole{-90, 0}, far{1e300, 0};
  fenv_t host;
  fegetenv(&host);
  feclearexcept(FE_ALL_EXCEPT);
  feenableexcept(FE_DIVBYZERO | FE_OVERFLOW);  // what such a host would have seen inside fails the call
  bool forward = true, inverse = true;
  const auto forwardLines = Logged([&] { forward = projector.Forward(&pole, 1); });
  const auto inverseLines = Logged([&] { inverse = projector.Inverse(&far, 1); });
  fesetenv(&host);
  ASSERT_TRUE(!forward && !inverse && !forwardLines.empty() && !inverseLines.empty());
  EXPECT_EQ(forwardLines.back(), "Forward projection function failed!");
  EXPECT_EQ(inverseLines.back(), "Inverse projection function failed!");
}
#endif
#endif

TEST(LogEntries, FailedDatumConversionsSaySo) {
  const TemporaryDirectory directory;
  detail::SetNtv2Path((directory / "none.gsb").string().c_str());
  DATUMXFORM xform{};
  xform.SrcDatum = DT_NAD_1927_CANADA_NTV2;
  xform.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
  DATUMPOINT point{-100, 50};
  const auto lines = Logged([&] { DatConvertDatum(&xform, &point, 1); });
  detail::SetNtv2Path(nullptr);
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines.back(), "NTV2 transform failure.");
}

// Both dumps know no name for an ellipsoid of the host's own, nor outside the table.
TEST(LogEntries, DumpsNameEllipsoidsAlike) {
  const struct {
    int ellipsoid;
    const char* text;
  } rows[] = {{0, "0 (UNKNOWN"}, {47, "47 (WGS 84"}, {56, "56 (UNKNOWN"}, {-1, "-1 (UNKNOWN"}};
  for (const auto& row : rows) {
    PROJDATA record{};
    DATUMXFORM xform{};
    xform.Step1.Ellipsoid = record.Ellipsoid = static_cast<EllipsoidType>(row.ellipsoid);
    const std::string line = std::string("    Ellipsoid:       ") + row.text;
    const auto has = [&line](const std::vector<std::string>& lines) {
      return std::any_of(lines.begin(), lines.end(), [&](const std::string& text) { return text.starts_with(line); });
    };
    EXPECT_TRUE(has(Logged([&] { ProjCheckParams(&record, nullptr, false); }))) << line;
    EXPECT_TRUE(has(Logged([&] { DatDeleteDatum(DatCreateDatum(&xform)); }))) << line;
  }
}

// Resizing logs what it does, in this order and under the record's address.
TEST(LogEntries, ResizingFreesDerivesAndRefits) {
  GEOREF g{};
  g.Method = RM_AFFINECOEFFICIENTS;
  const double coefficients[] = {100, 2, 0, 200, 0, -2};
  std::copy(std::begin(coefficients), std::end(coefficients), g.Coeff);
  ASSERT_TRUE(RefAllocControls(&g, 2));
  char address[32];
  std::snprintf(address, sizeof address, "%p", static_cast<void*>(&g));
  const std::string at = address;
  auto lines = Logged([&] { EXPECT_TRUE(RefResize(&g, 10, 20, 30, 40)); });
  std::erase_if(lines, [&](const std::string& line) { return line.find(at) == line.npos; });
  EXPECT_EQ(lines, (std::vector<std::string>{"RefResize(pRefData=" + at + ", iOldW=10, iOldH=20, iNewW=30, iNewH=40)",
                                             "RefFreeControls(" + at + ")",
                                             "RefCoeffToControls(pRefData=" + at + ", iWidth=30, iHeight=40)",
                                             "RefCoeffToControls(pRefData=" + at + ")"}));
  const double width = g.Coeff[1], height = g.Coeff[5];
  EXPECT_NEAR(width, 2.0 / 3, 1e-12);
  EXPECT_NEAR(height, -1, 1e-12);
  EXPECT_EQ(g.nControls, 4);
  RefFreeControls(&g);
}

}  // namespace
}  // namespace orvex::test
