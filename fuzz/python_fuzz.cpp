// Fuzzer of the Python package. Values of every kind are made and given to it by python_fuzz.py; here the interpreter
// is started, with the extension in this very program, so that the sanitizers see it.
#include <pybind11/embed.h>

#include <cstring>
#include <stdexcept>

#include "Files.h"
#include "Input.h"

extern "C" PyObject* PyInit__core();  // of the extension
// What the fuzzer takes for branches taken besides those of the program: here, steps from line to line of the package.
__attribute__((section("__libfuzzer_extra_counters"), used)) std::uint8_t g_linesTaken[1 << 15];

namespace py = pybind11;

namespace {

void Require(const PyStatus& status) {
  if (PyStatus_Exception(status)) throw std::runtime_error(status.err_msg);
}

/// An interpreter of which everything is the same in every run, and whose memory the address sanitizer knows.
void StartInterpreter() {
  PyPreConfig before;
  PyPreConfig_InitIsolatedConfig(&before);
  before.allocator = PYMEM_ALLOCATOR_MALLOC;
  before.utf8_mode = 1;
  Require(Py_PreInitialize(&before));
  PyImport_AppendInittab("_core", PyInit__core);
  PyConfig config;
  PyConfig_InitIsolatedConfig(&config);
  config.use_hash_seed = 1;
  config.hash_seed = 0;
  config.site_import = 1;
  config.write_bytecode = 0;
  Require(PyConfig_SetBytesString(&config, &config.program_name, ORVEX_FUZZ_PYTHON));  // whose packages are found
  Require(Py_InitializeFromConfig(&config));
  PyConfig_Clear(&config);
}

int CountLine(PyObject*, PyFrameObject* frame, int event, PyObject*) {
  static int before = 0;
  if (event != PyTrace_LINE) return 0;
  PyCodeObject* const code = PyFrame_GetCode(frame);
  const char* const file = PyUnicode_AsUTF8(code->co_filename);
  if (std::strstr(file, "/orvex/") != nullptr) {
    const int here = PyFrame_GetLineNumber(frame) + 997 * static_cast<int>(std::strlen(file));
    ++g_linesTaken[static_cast<std::size_t>(here * 31 + before) % sizeof g_linesTaken];
    before = here;
  }
  Py_DECREF(code);
  return 0;
}

/// The function that takes an input.
PyObject* Load() {
  StartInterpreter();
  const py::module_ sys = py::module_::import("sys");
  sys.attr("modules")["orvex._core"] = py::module_::import("_core");
  for (const char* path : {ORVEX_FUZZ_PACKAGE, ORVEX_FUZZ_DRIVER}) sys.attr("path").attr("insert")(0, path);
  const py::module_ driver = py::module_::import("python_fuzz");
  driver.attr("DIRECTORY") = orvex::fuzz::Files().Path();
  PyEval_SetTrace(CountLine, nullptr);
  return py::object(driver.attr("run")).release().ptr();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const py::handle run = Load();  // never given back: the interpreter ends with the process
  try {
    run(py::bytes(reinterpret_cast<const char*>(data), size));
  } catch (const py::error_already_set& e) {
    orvex::fuzz::Expect(false, e.what());
  }
  return 0;
}
