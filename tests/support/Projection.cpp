// Helpers of the projection tests.
#include "support/Projection.h"

#include <fstream>
#include <sstream>

namespace orvex::test {

namespace {

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> fields;
  for (std::size_t begin = 0;;) {
    const std::size_t end = text.find(separator, begin);
    fields.emplace_back(text.substr(begin, end - begin));
    if (end == std::string_view::npos) return fields;
    begin = end + 1;
  }
}

}  // namespace

ProjType TypeOf(const std::string& displayName) {
  for (int type = 0; type < ProjNumProjections(); ++type) {
    char name[64];
    ProjGetProjectionInfo(static_cast<ProjType>(type), name);
    if (displayName == name) return static_cast<ProjType>(type);
  }
  ADD_FAILURE() << "no projection named " << displayName;
  return PT_UNDEFINED;
}

CsvFile::CsvFile(const std::string& name) {
  std::ifstream file(std::string(ORVEX_TEST_DATA) + "/" + name);
  EXPECT_TRUE(file) << name;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    if (m_columns.empty()) {
      m_columns = Split(line, ',');
    } else {
      m_rows.push_back(Split(line, ','));
      m_rows.back().resize(m_columns.size());
    }
  }
  EXPECT_FALSE(m_rows.empty()) << name;
}

const std::string& CsvFile::Text(std::size_t row, const std::string& column) const {
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    if (m_columns[i] == column) return m_rows[row][i];
  }
  throw std::out_of_range("no column " + column);
}

void CheckGolden(const std::string& file, ProjAccuracy accuracy, const std::string& projection) {
  const CsvFile csv(file);
  std::size_t checked = 0;
  for (std::size_t row = 0; row < csv.Rows(); ++row) {
    if (!projection.empty() && csv.Text(row, "projection") != projection) continue;
    ++checked;
    PROJDATA rec = Record(TypeOf(csv.Text(row, "projection")), csv.Text(row, "parameters"));
    const PROJPOINT geographic{csv.Number(row, "lon"), csv.Number(row, "lat")};
    const PROJPOINT projected{csv.Number(row, "x"), csv.Number(row, "y")};
    SCOPED_TRACE(file + ": " + csv.Text(row, "projection") + " " + csv.Text(row, "parameters") + " at " +
                 csv.Text(row, "lon") + ", " + csv.Text(row, "lat") + " (" + csv.Text(row, "origin") + ")");
    CProjector projector(&rec);
    EXPECT_TRUE(projector.SetAccuracy(accuracy));
    if (!csv.Text(row, "tol_xy").empty()) {
      const PROJPOINT p = Forward(projector, geographic.x, geographic.y);
      EXPECT_NEAR(p.x, projected.x, csv.Number(row, "tol_xy"));
      EXPECT_NEAR(p.y, projected.y, csv.Number(row, "tol_xy"));
    }
    if (!csv.Text(row, "tol_deg").empty()) {
      const PROJPOINT p = Inverse(projector, projected.x, projected.y);
      EXPECT_LE(ArcDegrees(p, geographic), csv.Number(row, "tol_deg")) << p.x << ", " << p.y;
    }
  }
  EXPECT_GT(checked, 0u) << file << " has no " << projection;
}

CProjector ExactProjector(PROJDATA record) {
  CProjector projector(&record);
  EXPECT_TRUE(projector.SetAccuracy(PA_EXACT)) << "type " << record.Type;
  return projector;
}

PROJPOINT Forward(CProjector& projector, double lon, double lat) {
  PROJPOINT p{lon, lat};
  EXPECT_TRUE(projector.Forward(&p, 1));
  return p;
}

PROJPOINT Inverse(CProjector& projector, double x, double y) {
  PROJPOINT p{x, y};
  EXPECT_TRUE(projector.Inverse(&p, 1));
  return p;
}

Jacobian JacobianAt(CProjector& projector, double lon, double lat, double stepDeg) {
  const auto derivative = [&](double dLon, double dLat) {
    const auto at = [&](double n) { return Forward(projector, lon + n * dLon, lat + n * dLat); };
    const PROJPOINT a = at(-2), b = at(-1), c = at(1), d = at(2);
    const double unit = 12 * stepDeg * kRadiansPerDegree;
    return PROJPOINT{(a.x - 8 * b.x + 8 * c.x - d.x) / unit, (a.y - 8 * b.y + 8 * c.y - d.y) / unit};
  };
  const PROJPOINT byLon = derivative(stepDeg, 0), byLat = derivative(0, stepDeg);
  return {byLon.x, byLon.y, byLat.x, byLat.y};
}

LocalScale ScaleAt(CProjector& projector, double lon, double lat, double stepDeg) {
  PROJDATA rec{};
  projector.GetInfo(&rec);
  const double a = rec.MajorRadius, f = rec.Flattening, e2 = 2 * f - f * f;
  const double sinLat = std::sin(lat * kRadiansPerDegree), w = 1 - e2 * sinLat * sinLat;
  const double parallel =
      a * std::cos(lat * kRadiansPerDegree) / std::sqrt(w);   // ground metres per radian of longitude
  const double meridian = a * (1 - e2) / (w * std::sqrt(w));  // and of latitude
  const Jacobian j = JacobianAt(projector, lon, lat, stepDeg);
  const double k = std::hypot(j.xLon, j.yLon) / parallel, h = std::hypot(j.xLat, j.yLat) / meridian;
  return {k, h, (j.xLon * j.xLat + j.yLon * j.yLat) / (k * h * parallel * meridian),
          (j.xLon * j.yLat - j.xLat * j.yLon) / (parallel * meridian)};
}

double ArcDegrees(const PROJPOINT& a, const PROJPOINT& b) {
  const double dLon = std::remainder(a.x - b.x, 360.0) * kRadiansPerDegree, dLat = (a.y - b.y) * kRadiansPerDegree;
  const double u = std::sin(dLat / 2), v = std::sin(dLon / 2);
  const double chord = u * u + std::cos(a.y * kRadiansPerDegree) * std::cos(b.y * kRadiansPerDegree) * v * v;
  return 2 * std::asin(std::sqrt(std::min(1.0, chord))) / kRadiansPerDegree;
}

}  // namespace orvex::test
