// The argument checks of every projection module, called as the driver calls them.
#include <array>
#include <set>

#include "ModuleCall.h"
#include "projections/ProjectionTable.h"
#include "support/Projection.h"

namespace orvex::test {
namespace {

struct Module {
  ProjType type;
  const char* source;
  std::array<int, 4> lines;  // forward: null points, bad count; inverse: the same
};

// clang-format off
constexpr Module kModules[] = {
    {PT_MERCATOR,           "PrjMerc",    {225, 227, 379, 381}},
    {PT_ALBERS,             "PrjAlbers",  {219, 221, 442, 444}},
    {PT_MILLER,             "PrjMiller",  {226, 228, 293, 295}},
    {PT_UTM,                "PrjUTM",     {221, 223, 459, 461}},
    {PT_LAMBERT,            "PrjLambert", {219, 221, 520, 522}},
    {PT_STEREOGRAPHIC,      "PrjPolar",   {197, 199, 645, 647}},
    {PT_ORTHOGRAPHIC,       "PrjOrtho",   {199, 201, 310, 312}},
    {PT_MOLLWEIDE,          "PrjMolle",   {219, 221, 334, 336}},
    {PT_POLYCONIC,          "PrjPolycon", {222, 224, 453, 455}},
    {PT_HOTINE,             "PrjHotine",  {230, 232, 430, 432}},
    {PT_EQUICYLINDRICAL,    "PrjEquiCyl", {189, 191, 249, 251}},
    {PT_ROBINSON,           "PrjRobin",   {273, 275, 343, 345}},
    {PT_VANDERGRINTEN,      "PrjVanDer",  {220, 222, 320, 322}},
    {PT_CASSINI,            "PrjCassini", {199, 201, 310, 312}},
    {PT_TRANSVERSEMERCATOR, "PrjTMerc",   {220, 222, 449, 451}},
    {PT_GAUSSKRUGER,        "PrjTMerc",   {220, 222, 449, 451}},
    {PT_SINUSOIDAL,         "PrjSinus",   {220, 222, 403, 405}},
    {PT_LAMBERTAZIMUTHAL,   "PrjLamAEA",  {189, 191, 343, 345}},
    {PT_BONNE,              "PrjBonne",   {221, 223, 421, 423}},
    {PT_ROBINSONSTERLING,   "PrjRobStr",  {220, 222, 320, 322}},
    {PT_ECKERT4,            "PrjEckert4", {220, 222, 327, 329}},
    {PT_ECKERT6,            "PrjEckert6", {220, 222, 324, 326}},
    {PT_OBLIQUEMERCATOR,    "PrjOblMerc", {230, 232, 330, 332}},
    {PT_EQUICONIC,          "PrjEquiCon", {224, 226, 323, 325}},
    {PT_GNOMONIC,           "PrjGnom",    {207, 209, 329, 331}},
    {PT_AZIMUTHALEQUI,      "PrjAzimuth", {207, 209, 344, 346}},
};
// clang-format on

std::string Reported(detail::ConvertOperation operation, PROJPOINT* pts, int nPts) {
  PROJDATA work{};
  try {
    operation(Call(&work, pts, nPts));
  } catch (const shr::Exception& e) {
    EXPECT_EQ(e.MessageId(), 20200);
    return e.Source() + ':' + std::to_string(e.Line());
  }
  return "nothing";
}

TEST(ProjectionModules, ArgumentChecks) {
  for (const Module& module : kModules) {
    const detail::ProjectionRow& row = *detail::FindRow(module.type);
    for (const bool inverse : {false, true}) {
      const detail::ConvertOperation operation = inverse ? row.inverse : row.forward;
      const auto expected = [&](std::size_t i) {
        return std::string(module.source) + ':' + std::to_string(module.lines[i + (inverse ? 2 : 0)]);
      };
      PROJPOINT pts[] = {{DBL_MAX, 7}, {7, DBL_MAX}};
      EXPECT_FALSE(operation(Call(nullptr, pts, 1))) << module.source;
      EXPECT_FALSE(operation(Call(nullptr, nullptr, 0))) << module.source;
      EXPECT_EQ(Reported(operation, nullptr, 1), expected(0));
      EXPECT_EQ(Reported(operation, pts, 0), expected(1));
      // Markers are passed over, even where the record is good for nothing.
      PROJDATA work{};
      EXPECT_TRUE(operation(Call(&work, pts, 2))) << module.source;
      EXPECT_TRUE(pts[0].x == DBL_MAX && pts[0].y == 7 && pts[1].x == 7 && pts[1].y == DBL_MAX) << module.source;
      EXPECT_EQ(+work.iResult, 0) << module.source;
    }
  }
}

// The tables of the tests leave no projection out.
TEST(ProjectionModules, TablesAreComplete) {
  std::set<int> modules, forms;
  for (const Module& module : kModules) modules.insert(module.type);
  for (const ProjectionForm& form : AllProjections()) forms.insert(form.type);
  EXPECT_EQ(modules.size(), 26U);
  EXPECT_EQ(forms.size(), 28U);
}

}  // namespace
}  // namespace orvex::test
