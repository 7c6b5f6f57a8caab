// module - orvex._core: what the Python side of the package needs of the library. Arrays arrive here as columns of
// native doubles; everything that may arrive otherwise is brought into that form, or refused, by the Python side.
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include <shr/exception.h>

#include "Catalogue.h"
#include "Conversion.h"
#include "Failure.h"
#include "Record.h"
#include "ResultMemory.h"
#include "Systems.h"

namespace py = pybind11;

namespace orvex::python {

namespace {

constexpr int kBadParameter = 20205;
using Recipes = std::vector<std::shared_ptr<Recipe>>;

// ---- errors ----

void Raise(const char* message, int id) {
  const py::object type = py::module_::import("orvex._errors").attr("OrvexError");
  PyErr_SetObject(type.ptr(), type(message, id).ptr());
}

void Translate(std::exception_ptr failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const shr::Exception& e) {
    Raise(e.what(), e.MessageId());
  } catch (const tool::Failure& e) {
    Raise(e.what(), kBadParameter);
  }
}

// ---- arrays ----

Column ColumnOf(const py::array& array, bool written) {
  const bool aligned = (array.flags() & py::detail::npy_api::NPY_ARRAY_ALIGNED_) != 0;
  if (!py::isinstance<py::array_t<double>>(array) || array.ndim() != 1 || !aligned || (written && !array.writeable())) {
    throw tool::Failure("an aligned array of native doubles with one dimension is needed");
  }
  auto* const first = static_cast<double*>(const_cast<void*>(array.data()));
  return {first, array.strides(0) / static_cast<py::ssize_t>(sizeof(double))};
}

Points PointsOf(const py::array& x, const py::array& y, bool written) {
  if (x.size() != y.size()) throw tool::Failure("x and y differ in length");
  return {ColumnOf(x, written), ColumnOf(y, written), static_cast<std::size_t>(x.size())};
}

Chain ChainOf(const py::array& array) {
  const auto points = py::array_t<double, py::array::c_style | py::array::forcecast>::ensure(array);
  if (!points || points.ndim() != 2 || points.shape(1) != 2) throw tool::Failure("an array of shape (n, 2) is needed");
  Chain chain(static_cast<std::size_t>(points.shape(0)));
  for (std::size_t i = 0; i < chain.size(); ++i) {
    const auto row = static_cast<py::ssize_t>(i);
    chain[i] = {points.at(row, 0), points.at(row, 1)};
  }
  return chain;
}

std::vector<py::array_t<double>> ArraysOf(const std::vector<Chain>& chains) {
  std::vector<py::array_t<double>> arrays;
  for (const Chain& chain : chains) {
    arrays.emplace_back(std::vector<py::ssize_t>{static_cast<py::ssize_t>(chain.size()), 2},
                        reinterpret_cast<const double*>(chain.data()));
  }
  return arrays;
}

template <class Work>
auto Unlocked(Work work) {
  const py::gil_scoped_release release;
  return work();
}

// ---- conversions ----

std::size_t Convert(Conversion& self, const py::array& x, const py::array& y, const py::array& outX,
                    const py::array& outY, int threads) {
  const Points from = PointsOf(x, y, false), to = PointsOf(outX, outY, true);
  if (from.size != to.size || threads < 1) throw tool::Failure("the arrays do not fit together");
  return Unlocked([&] { return self.Convert(from, to, threads); });
}

std::unique_ptr<Conversion> MakeConversion(Recipes recipes) {
  if (std::find(recipes.begin(), recipes.end(), nullptr) != recipes.end()) throw tool::Failure("a recipe is None");
  return std::make_unique<Conversion>(std::move(recipes));
}

std::pair<double, double> ConvertPoint(Conversion& self, double x, double y) {
  const Points point{{&x, 1}, {&y, 1}, 1};
  self.Convert(point, point, 1);
  return {x, y};
}

std::shared_ptr<Recipe> DatumRecipe(int from, int to, const std::optional<DatumParameters>& step1,
                                    const std::optional<DatumParameters>& step2, bool exact) {
  DATUMXFORM xform{};
  xform.SrcDatum = static_cast<DatumType>(from);
  xform.DestDatum = static_cast<DatumType>(to);
  if (step1) xform.Step1 = StepOf(*step1, false);
  if (step2) xform.Step2 = StepOf(*step2, true);
  return ChangeDatum(xform, exact);
}

std::vector<GEOREFPOINT> ControlsOf(const py::array& array) {
  std::vector<GEOREFPOINT> controls;
  for (const PROJPOINT& p : ChainOf(array)) controls.push_back({p.x, p.y});
  return controls;
}

py::array_t<bool> Contains(const Record& record, const py::array_t<double, py::array::c_style>& lon,
                           const py::array_t<double, py::array::c_style>& lat) {
  if (lon.size() != lat.size()) throw tool::Failure("the arrays do not fit together");
  py::array_t<bool> inside(lon.size());
  record.Contains(lon.data(), lat.data(), inside.mutable_data(), static_cast<std::size_t>(lon.size()));
  return inside;
}

std::vector<py::array_t<double>> ClipRings(const Record& record, const std::vector<py::array>& arrays) {
  std::vector<Chain> rings;
  for (const py::array& array : arrays) rings.push_back(ChainOf(array));
  return ArraysOf(Unlocked([&] { return record.ClipRings(rings); }));
}

std::vector<py::array_t<double>> ClipLine(const Record& record, const py::array& array) {
  const Chain line = ChainOf(array);
  return ArraysOf(Unlocked([&] { return record.ClipLine(line); }));
}

// ---- custom datums: paths and names in any encoding, as Python has the names of files ----

std::string BytesOf(const py::object& text) {
  PyObject* bytes = nullptr;
  if (PyUnicode_FSConverter(text.ptr(), &bytes) == 0) throw py::error_already_set();
  return py::reinterpret_steal<py::bytes>(bytes);
}

std::vector<py::str> StoredNames(const py::object& ini) {
  std::vector<py::str> names;
  for (const std::string& name : StoredDatums(BytesOf(ini))) {
    names.push_back(py::reinterpret_steal<py::str>(
        PyUnicode_DecodeFSDefaultAndSize(name.data(), static_cast<py::ssize_t>(name.size()))));
  }
  return names;
}

// ---- coordinate systems, as tuples in the order of their structures ----

py::tuple SystemOf(const std::string& text) {
  const System s = FindSystem(text);
  const py::object record = s.record.empty() ? py::object(py::none()) : py::object(py::bytes(s.record));
  return py::make_tuple(s.code, s.name, record, s.plane, s.unit, s.meridian, s.frame, s.datum, s.catalogue,
                        py::make_tuple(s.area.name, s.area.west, s.area.south, s.area.east, s.area.north),
                        s.deprecated);
}

std::vector<py::tuple> SystemRows(const std::string& text) {
  std::vector<py::tuple> rows;
  for (const SystemRow& row : SearchSystems(text)) {
    rows.push_back(py::make_tuple(row.code, row.name, row.projected, row.area, row.deprecated));
  }
  return rows;
}

void DefineConversions(py::module_& m) {
  py::class_<Recipe, std::shared_ptr<Recipe>>(m, "Recipe");
  py::class_<Conversion>(m, "Conversion")
      .def(py::init(&MakeConversion), py::arg("recipes"))
      .def("convert", Convert, py::arg("x"), py::arg("y"), py::arg("out_x"), py::arg("out_y"), py::arg("threads"))
      .def("point", ConvertPoint, py::arg("x"), py::arg("y"));
  py::class_<Record>(m, "Record")
      .def(py::init<int, const std::map<int, Value>&, bool>(), py::arg("type"), py::arg("values"), py::arg("wrap"))
      .def_static(
          "from_bytes", [](const py::bytes& bytes) { return Record(std::string(bytes)); }, py::arg("bytes"))
      .def("to_bytes", [](const Record& self) { return py::bytes(self.Bytes()); })
      .def_property_readonly("type", &Record::Type)
      .def_property_readonly("wrap", &Record::Wraps)
      .def("values", &Record::Values)
      .def(
          "forward", [](const Record& self, bool exact) { return Project(self.Data(), Direction::Forward, exact); },
          py::arg("exact"))
      .def(
          "inverse", [](const Record& self, bool exact) { return Project(self.Data(), Direction::Inverse, exact); },
          py::arg("exact"))
      .def("contains", Contains, py::arg("lon"), py::arg("lat"))
      .def("clip_line", ClipLine, py::arg("line"))
      .def("clip_rings", ClipRings, py::arg("rings"));
  m.def("new_array", NewArray, py::arg("shape"));
  m.def("change_datum", DatumRecipe, py::arg("from_"), py::arg("to"), py::arg("step1"), py::arg("step2"),
        py::arg("exact"));
  m.def("transform_plane", TransformPlane, py::arg("coefficients"));
  m.def(
      "count_angles",
      [](double unit, double meridian, bool toDegrees) {
        return CountAngles(unit, meridian, toDegrees ? Direction::Forward : Direction::Inverse);
      },
      py::arg("unit"), py::arg("meridian"), py::arg("to_degrees"));
  m.def(
      "georeference",
      [](int method, const py::array& source, const py::array& destination) {
        if (source.size() != destination.size()) throw tool::Failure("the control points do not come in pairs");
        return Georeference(static_cast<TransformMethod>(method), ControlsOf(source), ControlsOf(destination));
      },
      py::arg("method"), py::arg("source"), py::arg("destination"));
}

void DefineCatalogue(py::module_& m) {
  m.def("projections", Projections);
  m.def("ellipsoids", Ellipsoids);
  m.def("datums", Datums);
  m.def("zones", Zones);
  m.def("parameters", Parameters);
  m.def("used_parameters", UsedParameters, py::arg("projection"));
  m.def("georef_methods", GeorefMethods);
  m.def("datum_parameters", ParametersOf, py::arg("datum"));
  m.def("stored_datums", StoredNames, py::arg("ini"));
  m.def(
      "stored_datum",
      [](const py::object& ini, const py::object& name) { return StoredDatum(BytesOf(ini), BytesOf(name)); },
      py::arg("ini"), py::arg("name"));
  m.def(
      "store_datum",
      [](const py::object& ini, const py::object& name, const DatumParameters& parameters) {
        return StoreDatum(BytesOf(ini), BytesOf(name), parameters);
      },
      py::arg("ini"), py::arg("name"), py::arg("parameters"));
  m.def("zone_exists", ZoneExists, py::arg("type"), py::arg("zone"));
  m.def("find_system", SystemOf, py::arg("text"));
  m.def("search_systems", SystemRows, py::arg("text"));
  m.def("parse_angle", ParseAngle, py::arg("text"));
  m.def("format_angle", FormatAngle, py::arg("degrees"), py::arg("format"), py::arg("degree"), py::arg("minute"),
        py::arg("second"));
}

}  // namespace

}  // namespace orvex::python

PYBIND11_MODULE(_core, m) {
  m.doc() = "The compiled part of the package orvex.";
  m.attr("__version__") = ORVEX_VERSION;
  py::register_exception_translator(&orvex::python::Translate);
  orvex::python::DefineConversions(m);
  orvex::python::DefineCatalogue(m);
}
