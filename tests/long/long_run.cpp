// long_run - the long life of a host: rounds of everything that the library does, until as many points were converted
// and as many handles were made as the host wants. Every round must give what the first one gave, to the last bit, and
// after the first one neither memory nor open files may grow.
//
//   orvex_long_run [POINTS [HANDLES]]      one billion and ten million unless told otherwise
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <orvex/orvex.h>
#include <orvex/orvex_c.h>
#include <shr/exception.h>

#include "support/Checksum.h"
#include "support/Forms.h"
#include "support/GridFiles.h"

namespace {

using namespace orvex;

constexpr int kBatch = 1024, kShape = 64, kHandles = 24;  // points of an array, of a line; handles of a task
constexpr long kMemoryKb = 256;                           // what the allocator may add after the first round

/// What a task has done.
struct Tally {
  test::Checksum sum;
  std::uint64_t points = 0, handles = 0;
};

using Work = std::function<void(Tally&)>;

struct Task {
  std::string name;
  Work work;
  std::uint64_t first = 0;  ///< the checksum of the first round
};

void Require(bool holds, const char* what) {
  if (!holds) throw std::runtime_error(what);
}

/// Fractions that fill a square evenly.
double Fraction(int i, double step) {
  const double turned = (i + 1) * step;
  return turned - static_cast<double>(static_cast<int>(turned));
}

struct Box {
  double west, east, south, north;
};

template <class Point>
std::vector<Point> Places(const Box& box, int count) {
  std::vector<Point> points;
  for (int i = 0; i < count; ++i) {
    const double u = Fraction(i, 0.7548776662466927), v = Fraction(i, 0.5698402909980532);
    points.push_back({box.west + u * (box.east - box.west), box.south + v * (box.north - box.south)});
  }
  return points;
}

/// Converts the points in place and as columns, which must give the same, and adds them up.
template <class Point, class InPlace, class Columns>
void Convert(Tally& tally, std::vector<Point>& points, const InPlace& inPlace, const Columns& columns) {
  const int count = static_cast<int>(points.size());
  std::vector<double> x, y, toX(points.size()), toY(points.size());
  for (const Point& p : points) {
    x.push_back(p.x);
    y.push_back(p.y);
  }
  tally.sum.Add(static_cast<int>(inPlace(points.data(), count)));
  tally.sum.Add(static_cast<int>(columns(x.data(), y.data(), toX.data(), toY.data(), count)));
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Point column{toX[i], toY[i]};
    Require(std::memcmp(&column, &points[i], sizeof column) == 0, "columns differ from points");
  }
  tally.sum.AddPoints(points);
  tally.points += 2 * points.size();
}

// ---- projections ----

bool ORVEX_CALL TakeLine(void* user, int count, PROJPOINT* points) {
  static_cast<Tally*>(user)->sum.AddPoints(std::vector<PROJPOINT>(points, points + count));
  return true;
}

bool ORVEX_CALL TakeRings(void* user, int parts, const int* counts, PROJPOINT* points) {
  for (int part = 0; part < parts; points += counts[part], ++part) TakeLine(user, counts[part], points);
  return true;
}

/// A handle, one of each kind in turn, of a record, and a point through it.
void LiveShortly(Tally& tally, int kind, PROJDATA record, ProjAccuracy accuracy, PROJPOINT point) {
  char message[ORVEX_MESSAGE_SIZE];
  if (kind % 3 == 0) {
    void* const handle = ProjCreateProjection(&record);
    ProjSetAccuracy(handle, accuracy);
    ProjForward(handle, &point, 1);
    ProjDeleteProjection(handle);
  } else if (kind % 3 == 1) {
    CProjector projector(&record);
    projector.SetAccuracy(accuracy);
    CProjector copy(projector);
    ++tally.handles;
    copy.Forward(&point, 1);
  } else {
    orvex_projection plain;
    static_assert(sizeof plain == sizeof record);
    std::memcpy(&plain, &record, sizeof plain);
    void* handle = nullptr;
    Require(orvex_create(&plain, &handle, message) == ORVEX_OK, "refused");
    orvex_set_accuracy(handle, accuracy);
    orvex_point there{point.x, point.y};
    orvex_forward(handle, &there, 1, message);
    orvex_delete(handle);
    point = {there.x, there.y};
  }
  tally.sum.AddPoints(std::vector<PROJPOINT>{point});
  ++tally.handles;
  ++tally.points;
}

void Project(Tally& tally, const test::ProjectionForm& form, ProjAccuracy accuracy) {
  PROJDATA record = form.MakeRecord();
  CProjector projector(&record);
  ++tally.handles;
  Require(projector.SetAccuracy(accuracy), "accuracy refused");
  const auto places = Places<PROJPOINT>({form.west, form.east, form.south, form.north}, kBatch);
  auto points = places;
  Convert(
      tally, points, [&](PROJPOINT* pts, int n) { return projector.Forward(pts, n); },
      [&](const double* lon, const double* lat, double* x, double* y, int n) {
        return projector.ForwardColumns(lon, lat, x, y, n);
      });
  Convert(
      tally, points, [&](PROJPOINT* pts, int n) { return projector.Inverse(pts, n); },
      [&](const double* x, const double* y, double* lon, double* lat, int n) {
        return projector.InverseColumns(x, y, lon, lat, n);
      });
  tally.sum.Add(static_cast<int>(projector.LLInProjection(places.data())));
  const int parts[] = {kShape / 2, kShape / 2};
  projector.LLPreclipPolyline(&tally, kShape, places.data(), TakeLine);
  projector.LLPreclipPolygon(&tally, 2, parts, places.data(), TakeRings, TakeLine);
  tally.points += 2 * kShape;
  for (int i = 0; i < kHandles; ++i) LiveShortly(tally, i, record, accuracy, places[static_cast<std::size_t>(i)]);
}

// ---- datums ----

/// Where a datum's grid lies; the whole world where it has none.
Box AreaOf(DatumType datum) {
  switch (datum) {
    case DT_NAD_1927_CONUS_NADCON:
    case DT_NAD_1927_CANADA_NTV2:
      return {-121, -89, 29, 51};
    case DT_NAD_1927_PUERTO_RICO_AND_VIRGIN_ISLANDS_NADCON:
      return {-68.5, -63, 16.5, 19.5};
    default:
      return {-185, 185, -90, 90};
  }
}

void Shift(Tally& tally, const DATUMXFORM& record, ProjAccuracy accuracy, const Box& box) {
  CDatumTransform transform(&record);
  ++tally.handles;
  Require(transform.SetAccuracy(accuracy), "accuracy refused");
  auto points = Places<DATUMPOINT>(box, kBatch);
  Convert(
      tally, points, [&](DATUMPOINT* pts, int n) { return transform.Convert(pts, n); },
      [&](const double* lon, const double* lat, double* toLon, double* toLat, int n) {
        return transform.ConvertColumns(lon, lat, toLon, toLat, n);
      });
  for (int i = 0; i < kHandles; ++i) {
    DATUMPOINT point{box.west + i, box.south + 1};
    if (i % 2 == 0) {
      void* const handle = DatCreateDatum(&record);
      DatSetAccuracy(handle, accuracy);
      DatConvertDatum(handle, &point, 1);
      DatDeleteDatum(handle);
    } else {
      CDatumTransform copy(transform);
      copy.Convert(&point, 1);
    }
    tally.sum.AddPoints(std::vector<DATUMPOINT>{point});
    ++tally.handles;
    ++tally.points;
  }
}

void WriteGrids(const std::filesystem::path& directory) {
  const auto seconds = [](int row, int column) { return (row * 37 + column * 101) % 4001 / 256.0; };
  for (const char* suffix : {".LAS", ".LOS"}) {
    test::WriteFile(directory / (std::string("conus") + suffix), test::NadconFile({33, 23, -121, 29, 1}, seconds));
    test::WriteFile(directory / (std::string("prvi") + suffix),
                    test::NadconFile({22, 12, -68.25, 16.75, 0.25}, seconds));
  }
  const auto field = [](double lon, double lat) { return std::pair(lat / 4, lon / 8); };
  test::WriteFile(directory / "NTV2_0.GSB", test::Ntv2File({{"WHOLE", "NONE", -120, 30, -90, 50, 1, field},
                                                            {"PART", "WHOLE", -110, 35, -100, 45, 0.25, field}}));
}

// ---- zones, texts, fits, custom datums, refusals ----

void Zones(Tally& tally) {
  char name[64];
  for (const ProjType set : {PT_STATEPLANE27, PT_STATEPLANE83}) {
    for (int zone = 0; zone < SZ_NONE; ++zone) {
      PROJDATA record = test::Record(set, "");
      record.Zone = static_cast<StateZoneType>(zone);
      StateZoneType found = SZ_NONE;
      int code = 0;
      ProjGetStateZoneInfo(static_cast<StateZoneType>(zone), name, &code);
      Require(ProjGetStateZoneFromName(&found, name) && found == zone, "a zone's name leads elsewhere");
      if (ProjCheckParams(&record, nullptr, false) != 0) continue;  // not in this set
      PROJDATA centre = record;
      ProjGetStateZoneParams(&centre);
      for (const ProjAccuracy accuracy : {PA_STATED, PA_EXACT}) {
        LiveShortly(tally, zone, record, accuracy, {centre.Lon0 + 0.5, centre.Lat0 + 1});
      }
    }
  }
  for (int zone = 1; zone <= 60; ++zone) {
    for (const bool south : {false, true}) {
      int number = 0;
      bool southern = !south;
      Require(ProjUTMZoneNumberToName(zone, south, name, sizeof name, UTMZoneNameFormat{}) &&
                  ProjUTMZoneNameToNumber(name, &number, &southern) && number == zone && southern == south,
              "a UTM zone's name leads elsewhere");
      PROJDATA record = test::Record(PT_UTM, south ? "bSouth=1" : "");
      record.Lon0 = ProjUTMZoneNumberToLon(zone);
      LiveShortly(tally, zone, record, PA_EXACT, {record.Lon0 + 1, south ? -33.0 : 44.0});
    }
  }
}

void Texts(Tally& tally) {
  char text[260];
  for (int i = 0; i < kBatch; ++i) {
    const int format = (i % 16) | (i % 3 == 0 ? LLF_DECIMALDEGREES : 0) | (i % 5 == 0 ? LLF_HEMISPHERE : LLF_MINUSSIGN);
    DegreesToLatLon(text, 360 * Fraction(i, 0.7548776662466927) - 180, format, 'd', '\'', '"');
    double degrees = 0;
    tally.sum.Add(static_cast<int>(LatLonToDegrees(text, &degrees, 'd')));
    tally.sum.Add(degrees);
    for (const char* c = text; *c != '\0'; ++c) tally.sum.Add(static_cast<int>(*c));
  }
}

void Fit(Tally& tally, TransformMethod method) {
  constexpr int kControls = 23;
  GEOREF record{};
  record.Method = method;
  Require(RefAllocControls(&record, kControls), "no controls");
  for (int i = 0; i < kControls; ++i) {
    const double x = i % 5 * 200 + 90 * Fraction(i, 0.61), y = i / 5 * 200 + 90 * Fraction(i, 0.37);
    record.pSrc[i] = {x, y};
    record.pDst[i] = {4e5 + x * 1.25 - y * 0.125 + i % 3, 5e6 + x * 0.25 + y * 0.875 - i % 4};
  }
  if (method == RM_AFFINECOEFFICIENTS) {
    const double coefficients[] = {4e5, 1.25, -0.125, 5e6, 0.25, 0.875};
    std::memcpy(record.Coeff, coefficients, sizeof coefficients);
  }
  std::vector<GEOREFPOINT> points = Places<GEOREFPOINT>({-100, 1100, -100, 1100}, kBatch);
  for (int i = 0; i < kHandles; ++i) {
    CGeorefTransform fit(&record);
    const CGeorefTransform copy(fit);
    double total = 0;
    std::vector<double> errors(kControls);
    Require(fit.IsCreated() && copy.IsCreated(), "a fit that fails");
    tally.sum.Add(static_cast<int>(copy.ComputeError(&total, errors.data())));
    tally.sum.Add(total);
    const int count = i == 0 ? kBatch : 1;
    fit.Forward(points.data(), count);
    tally.handles += 2;
    tally.points += static_cast<std::uint64_t>(count);
  }
  Require(RefResize(&record, 1000, 1000, 800, 700), "not resized");
  tally.sum.AddPoints(points);
  RefFreeControls(&record);
}

void CustomDatums(Tally& tally, const std::string& ini) {
  DATUM2WGS84 step{}, read{};
  step.Method = DM_BURSA;
  step.Ellipsoid = ET_WGS_84;
  step.dx = 12.5, step.rz = -0.25, step.k = 1.5;
  Require(NDatSave(ini.c_str(), "Own", &step), "not saved");
  Require(NDatGetDatumParams(ini.c_str(), "own", &read), "not read");
  char name[260];
  Require(NDatEnumDatumName(ini.c_str(), name, DatNumDatums()), "not listed");
  tally.sum.Add(NDatNumDatums(ini.c_str()));
  DATUMXFORM record{};
  record.SrcDatum = DT_USER_DEFINED;
  record.Step1 = read;
  record.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
  for (const ProjAccuracy accuracy : {PA_STATED, PA_EXACT}) {
    Shift(tally, record, accuracy, AreaOf(DT_USER_DEFINED));
  }
  Require(NDatDelete(ini.c_str(), "Own"), "not deleted");
}

/// Records that are refused, with the exceptions and messages that go with it.
void Refusals(Tally& tally) {
  for (int i = 0; i < kBatch; ++i) {
    PROJDATA record = test::Record(PT_LAMBERT, "Lat1=30;Lat2=30");
    try {
      ProjCreateProjection(&record);
      throw std::runtime_error("a record was not refused");
    } catch (const shr::Exception& e) {
      tally.sum.Add(e.MessageId());
      tally.sum.Add(static_cast<int>(e.Message().size()));
    }
    char message[ORVEX_MESSAGE_SIZE];
    void* datum = nullptr;
    tally.sum.Add(orvex_datum_create(DT_COUNT + i, DT_TOKYO, &datum, message));
  }
}

std::vector<Task> Tasks(const std::string& ini) {
  std::vector<Task> tasks;
  const auto add = [&tasks](const std::string& name, Work work) { tasks.push_back({name, std::move(work)}); };
  for (const ProjAccuracy accuracy : {PA_STATED, PA_EXACT}) {
    const std::string manner = accuracy == PA_EXACT ? ", exactly" : "";
    for (const test::ProjectionForm& form : test::AllProjections()) {
      PROJDATA record = form.MakeRecord();
      if (!CProjector(&record).SetAccuracy(accuracy)) continue;  // without an exact form
      add("projection " + std::to_string(form.type) + ", " + form.form + manner,
          [&form, accuracy](Tally& tally) { Project(tally, form, accuracy); });
    }
    for (int from = 1; from < DT_COUNT; ++from) {
      // To WGS 84, from there, and on to another datum.
      for (const auto& [source, destination] :
           {std::pair(from, +DT_WORLD_GEODETIC_SYSTEM_1984), std::pair(+DT_WORLD_GEODETIC_SYSTEM_1984, from),
            std::pair(from, from % 253 + 1)}) {
        DATUMXFORM record{};
        record.SrcDatum = static_cast<DatumType>(source);
        record.DestDatum = static_cast<DatumType>(destination);
        if (DatCheckParams(&record, nullptr, false) != 0) continue;  // without a way back
        const Box box = AreaOf(static_cast<DatumType>(from));
        add("datum " + std::to_string(source) + " to " + std::to_string(destination) + manner,
            [record, accuracy, box](Tally& tally) { Shift(tally, record, accuracy, box); });
      }
    }
  }
  for (int method = RM_HELMERT; method <= RM_INVERSEDISTANCE; ++method) {
    add("georeferencing " + std::to_string(method),
        [method](Tally& tally) { Fit(tally, static_cast<TransformMethod>(method)); });
  }
  add("zones", Zones);
  add("texts", Texts);
  add("custom datums", [ini](Tally& tally) { CustomDatums(tally, ini); });
  add("refusals", Refusals);
  return tasks;
}

// ---- what it takes from the system ----

struct Resources {
  long residentKb = 0, peakKb = 0, descriptors = 0;
};

Resources Taken() {
  Resources taken;
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind("VmRSS:", 0) == 0) taken.residentKb = std::atol(line.c_str() + 6);
    if (line.rfind("VmHWM:", 0) == 0) taken.peakKb = std::atol(line.c_str() + 6);
  }
  status.close();
  taken.descriptors = std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  return taken;
}

/// The sanitizers keep what was freed for a while; that nothing leaks they see by themselves.
constexpr bool MemoryIsOwn() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  return false;
#elif defined(__has_feature)
  // NOLINTNEXTLINE(misc-redundant-expression): two macros that stand for the same number when neither is there
  return !__has_feature(address_sanitizer) && !__has_feature(thread_sanitizer);
#else
  return true;
#endif
}

void RequireNoGrowth(const Resources& first, const Resources& now) {
  Require(now.descriptors <= first.descriptors, "open files grow");
  if (MemoryIsOwn()) Require(now.residentKb <= first.residentKb + kMemoryKb, "memory grows");
}

void Print(const char* when, const Resources& taken) {
  std::printf("%s: %ld KB in memory, %ld KB at most, %ld open files\n", when, taken.residentKb, taken.peakKb,
              taken.descriptors);
  std::fflush(stdout);
}

// ---- the rounds ----

struct Total {
  std::uint64_t rounds = 0, points = 0, handles = 0;
};

void Round(std::vector<Task>& tasks, Total& total) {
  for (Task& task : tasks) {
    Tally tally;
    try {
      task.work(tally);
    } catch (const std::exception& e) {
      throw std::runtime_error(task.name + ": " + e.what());
    }
    if (total.rounds == 0) task.first = tally.sum.Value();
    if (tally.sum.Value() != task.first) throw std::runtime_error(task.name + ": not what the first round gave");
    total.points += tally.points;
    total.handles += tally.handles;
  }
  ++total.rounds;
}

void Run(std::uint64_t points, std::uint64_t handles) {
  const test::TemporaryDirectory directory;
  WriteGrids(directory.Path());
  DatSetGridDirectory(directory.Path().string().c_str());
  const auto start = std::chrono::steady_clock::now();
  std::vector<Task> tasks = Tasks((directory / "host.ini").string());
  Total total;
  Round(tasks, total);
  const Resources first = Taken();
  Print("after the first round", first);
  while (total.rounds < 2 || total.points < points || total.handles < handles) {
    Round(tasks, total);
    RequireNoGrowth(first, Taken());
  }
  Print("at the end", Taken());
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  std::printf("%llu points, %llu handles, %llu rounds of %zu tasks, %.0f seconds\n",
              static_cast<unsigned long long>(total.points), static_cast<unsigned long long>(total.handles),
              static_cast<unsigned long long>(total.rounds), tasks.size(), seconds.count());
  DatSetGridDirectory(nullptr);
}

}  // namespace

int main(int argc, char** argv) {
  const auto argument = [&](int i, std::uint64_t otherwise) {
    return i < argc ? std::strtoull(argv[i], nullptr, 10) : otherwise;
  };
  try {
    Run(argument(1, 1'000'000'000), argument(2, 10'000'000));
  } catch (const std::exception& e) {
    std::fprintf(stderr, "long run: %s\n", e.what());
    return 1;
  }
  return 0;
}
