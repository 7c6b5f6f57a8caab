// The Windows library as hosts meet it: resources, loading, the log, unusual paths, files that cannot be written.
// Expected texts are the message table's; the rest are properties.
#include <gtest/gtest.h>
#include <windows.h>

#include <psapi.h>

#include <cstring>
#include <string>
#include <vector>

#include <orvex/orvex.h>
#include <orvex/orvex_c.h>
#include <shr/exception.h>

#include "support/Forms.h"
#include "support/GridFiles.h"

extern "C" const unsigned kCLayout[];
extern "C" const unsigned kCLayoutCount;

namespace orvex::test {
namespace {

#ifdef _WIN64
constexpr const char* kUnwinder = "libgcc_s_seh-1.dll";
#else
constexpr const char* kUnwinder = "libgcc_s_dw2-1.dll";
#endif
constexpr const char* kRuntimes[] = {kUnwinder, "libstdc++-6.dll", "libwinpthread-1.dll"};

std::string ProgramDirectory() {
  char path[MAX_PATH];
  GetModuleFileNameA(nullptr, path, sizeof path);
  const std::string file = path;
  return file.substr(0, file.rfind('\\') + 1);
}

std::wstring Wide(const std::string& text) {
  return {text.begin(), text.end()};  // ASCII
}

/// A library of its own for each test, so that attach and detach happen when the test says so.
class LoadedCopy {
 public:
  LoadedCopy(const LoadedCopy&) = delete;
  LoadedCopy& operator=(const LoadedCopy&) = delete;
  explicit LoadedCopy(const std::string& file = ProgramDirectory() + "talven.dll") {
    m_path = (m_directory / "copy.dll").string();
    CopyFileA(file.c_str(), m_path.c_str(), FALSE);
  }
  ~LoadedCopy() { Free(); }
  const std::string& Path() const { return m_path; }
  bool Load() {
    m_module = LoadLibraryA(m_path.c_str());
    return m_module != nullptr;
  }
  void Free() {
    if (m_module != nullptr) FreeLibrary(m_module);
    m_module = nullptr;
  }
  template <typename Function>
  Function* Find(const char* name) const {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(m_module, name)));
  }
  /// What becomes of a record with a negative scale.
  int Refuse(char* message) const {
    orvex_projection record{};
    record.type = PT_MERCATOR;
    record.scale = -1;
    void* handle = nullptr;
    return Find<decltype(orvex_create)>("orvex_create")(&record, &handle, message);
  }

 private:
  TemporaryDirectory m_directory;
  std::string m_path;
  HMODULE m_module = nullptr;
};

/// A file that nobody else can open. (Files marked read-only are no such case: the super-user's Wine writes them.)
class HeldFile {
 public:
  explicit HeldFile(const std::string& name)
      : m_file(CreateFileA(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {
    EXPECT_NE(m_file, INVALID_HANDLE_VALUE) << name;
  }
  ~HeldFile() { CloseHandle(m_file); }
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;

 private:
  HANDLE m_file;
};

TEST(Resources, HoldEveryMessageAndTheVersion) {
  const HMODULE module = GetModuleHandleA("talven.dll");
  ASSERT_NE(module, nullptr);
  char text[256];
  static constexpr struct {
    UINT id;
    const char* text;
  } kMessages[] = {
#define ORVEX_MESSAGE(messageId, messageText) {messageId, messageText},
#include "messages.def"
#undef ORVEX_MESSAGE
  };
  for (const auto& message : kMessages) {
    EXPECT_GT(LoadStringA(module, message.id, text, sizeof text), 0) << message.id;
    EXPECT_STREQ(text, message.text);
  }
  EXPECT_EQ(LoadStringA(module, 20206, text, sizeof text), 0);

  const std::string file = ProgramDirectory() + "talven.dll";
  DWORD ignored = 0;
  std::vector<char> version(GetFileVersionInfoSizeA(file.c_str(), &ignored));
  ASSERT_TRUE(GetFileVersionInfoA(file.c_str(), 0, static_cast<DWORD>(version.size()), version.data()));
  void* value = nullptr;
  UINT length = 0;
  ASSERT_TRUE(VerQueryValueA(version.data(), "\\StringFileInfo\\040904E4\\FileVersion", &value, &length));
  EXPECT_STREQ(static_cast<const char*>(value), ORVEX_VERSION);
}

// A library that has lost its strings still throws, with the substitute text.
TEST(Resources, MissingStrings) {
  LoadedCopy copy;
  std::string bytes = ReadWholeFile(copy.Path());
  const auto word = [&bytes](std::size_t at) {
    std::uint32_t value = 0;
    std::memcpy(&value, &bytes[at], sizeof value);
    return value;
  };
  const std::size_t section = bytes.find(".rsrc");
  ASSERT_NE(section, bytes.npos);
  std::size_t entry = word(section + 20) + 16;  // the root directory's first entry
  while (word(entry) != 6) entry += 8;          // RT_STRING becomes a kind that nobody asks for
  bytes[entry] = 5;
  WriteFile(copy.Path(), bytes);
  ASSERT_TRUE(copy.Load());
  char message[ORVEX_MESSAGE_SIZE];
  EXPECT_EQ(copy.Refuse(message), 20231);
  EXPECT_STREQ(message, "Failed loading error message!");
}

TEST(Loading, TellsWhatCannotBeLoaded) {
  const auto damaged = [](void (*damage)(std::string&)) {
    const TemporaryDirectory directory;
    const std::string file = (directory / "bad.dll").string();
    std::string bytes = ReadWholeFile(ProgramDirectory() + "talven.dll");
    damage(bytes);
    WriteFile(file, bytes);
    EXPECT_EQ(LoadLibraryA(file.c_str()), nullptr);
    return GetLastError();
  };
  EXPECT_EQ(damaged([](std::string& bytes) {  // the machine of the other width
              std::uint32_t header = 0;
              std::memcpy(&header, &bytes[0x3C], sizeof header);
              const bool wide = sizeof(void*) == 8;
              bytes[header + 4] = wide ? '\x4C' : '\x64';
              bytes[header + 5] = wide ? '\x01' : '\x86';
            }),
            DWORD{ERROR_BAD_EXE_FORMAT});
  EXPECT_EQ(damaged([](std::string& bytes) { bytes.resize(100); }), DWORD{ERROR_BAD_EXE_FORMAT});
  EXPECT_EQ(LoadLibraryA("no-such-library.dll"), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
}

// Loaded, used to the point of an exception that is caught, and freed: over and over without growing.
TEST(Loading, LeavesNothingBehind) {
  LoadedCopy copy;
  const auto round = [&copy] {
    ASSERT_TRUE(copy.Load());
    const auto create = copy.Find<void*(PROJDATA*)>("_ZN5orvex20ProjCreateProjectionEPNS_8PROJDATAE");
    const auto destroy = copy.Find<void(void*)>("_ZN5orvex20ProjDeleteProjectionEPv");
    PROJDATA record = Record(PT_MERCATOR, "Lon0=10");
    destroy(create(&record));
    record.Scale = -1;
    std::string caught;
    try {
      create(&record);
    } catch (const std::exception& e) {  // this program's own shr::Exception belongs to another module
      caught = e.what();
    }
    EXPECT_EQ(caught, "Scale parameter must be greater than zero");
    copy.Free();
    ASSERT_EQ(GetModuleHandleA("copy.dll"), nullptr);
  };
  const auto used = [] {
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    return std::pair{counters.PagefileUsage, handles};
  };
  for (int i = 0; i < 20; ++i) round();
  const auto before = used();
  for (int i = 0; i < 200; ++i) round();
  const auto after = used();
  EXPECT_LT(after.first, before.first + 200 * 1000);  // less than a kilobyte a round
  EXPECT_LE(after.second, before.second);
}

TEST(Exceptions, ReachTheHostWithTheirTypeAndContent) {
  PROJDATA record = Record(PT_LAMBERT, "Lat1=33;Lat2=33");
  for (int i = 0; i < 3; ++i) {
    try {
      CProjector projector(&record);
      FAIL();
    } catch (const shr::Exception& e) {
      EXPECT_EQ(e.MessageId(), 20247);
      EXPECT_EQ(e.Module(), "Orvex");
    }
    EXPECT_EQ(std::uncaught_exceptions(), 0);
  }
  // A host's own exception passes through the library from a callback and stays what it is.
  record = Record(PT_MERCATOR, "Lon0=0");
  CProjector projector(&record);
  const PROJPOINT line[] = {{0, 0}, {10, 10}};
  const auto callback = [](void*, int, PROJPOINT*) -> bool { throw std::string("host"); };
  EXPECT_THROW(projector.LLPreclipPolyline(nullptr, 2, line, callback), std::string);
}

TEST(LogFile, IsWrittenFromAttachToDetach) {
  constexpr const char* kFile = "c:\\talven.log";
  DeleteFileA(kFile);
  _putenv("TALVENLOG=1");
  LoadedCopy copy;
  ASSERT_TRUE(copy.Load());
  char message[ORVEX_MESSAGE_SIZE];
  copy.Refuse(message);
  {
    const HeldFile held(kFile);  // texts are dropped while it cannot be written
    copy.Refuse(message);
  }
  copy.Free();
  _putenv("TALVENLOG=");
  const std::string text = ReadWholeFile(kFile), rule(74, '-');
  EXPECT_TRUE(DeleteFileA(kFile));
  EXPECT_EQ(text.find("\r\n" + rule + "\r\nTALVEN.DLL log output started at "), 0u) << text;
  const std::size_t call = text.find("ProjCreateProjection(pProjData=");
  EXPECT_NE(call, text.npos);
  EXPECT_EQ(text.find("ProjCreateProjection(pProjData=", call + 1), text.npos);
  EXPECT_NE(text.find(rule + "\r\nTALVEN.DLL log output ended at ", call), text.npos);
}

/// Status of the grid host, run with its grid from a directory of the given name; the name is lengthened until the
/// program's path has that many characters.
DWORD RunGridHost(std::wstring name, std::size_t programLength = 0) {
  const TemporaryDirectory parent;
  const std::size_t length = parent.Path().wstring().size() + name.size() + std::strlen("\\\\grid_host.exe");
  if (programLength > length) name.append(programLength - length, L'x');
  const std::wstring directory = parent.Path().wstring() + L"\\" + name + L"\\";
  EXPECT_TRUE(CreateDirectoryW(directory.c_str(), nullptr));
  const auto bring = [&](const std::string& file) {
    EXPECT_TRUE(CopyFileW(Wide(ProgramDirectory() + file).c_str(), (directory + Wide(file)).c_str(), FALSE)) << file;
  };
  bring("grid_host.exe");
  bring("talven.dll");
  for (const char* runtime : kRuntimes) bring(runtime);
  const Ntv2SubGrid grid{"ONLY", "NONE", -110, 40, -90, 60, 5, [](double, double) { return std::pair(36.0, 0.0); }};
  WriteFile(std::filesystem::path(directory + L"NTV2_0.GSB"), Ntv2File({grid}));

  std::wstring command = L"\"" + directory + L"grid_host.exe\"";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  EXPECT_TRUE(
      CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process));
  WaitForSingleObject(process.hProcess, 60000);
  DWORD status = STILL_ACTIVE;
  GetExitCodeProcess(process.hProcess, &status);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  return status;
}

TEST(GridFile, IsFoundBesideTheProgram) {
  EXPECT_EQ(RunGridHost(L"plain"), 0u);
  EXPECT_EQ(RunGridHost(L"with a blank, and more"), 0u);
  EXPECT_EQ(RunGridHost(L"gr\u00FC\u00DFe \u00E9t\u00E9"), 0u);  // within code page 1252
  // Outside the code page the directory has no name that the library could use: a clear refusal.
  EXPECT_EQ(RunGridHost(L"\u0441\u0435\u0442\u043A\u0430"), DWORD{20280 - 20000});
}

// File names end at 259 characters, but not before.
TEST(GridFile, IsFoundBesideAProgramWithALongPath) {
  for (const std::size_t length : {254u, 255u, 256u, 259u}) EXPECT_EQ(RunGridHost(L"long", length), 0u) << length;
}

TEST(CustomStore, RefusesWhatCannotBeWritten) {
  const TemporaryDirectory directory;
  const std::string ini = (directory / "host.ini").string();
  const std::string content = "[Other]\r\nkeep=1\r\n";
  WriteFile(ini, content);
  DATUM2WGS84 step{};
  step.Method = DM_MOLODENSKY;
  step.Ellipsoid = ET_WGS_84;
  {
    const HeldFile held(ini);
    EXPECT_FALSE(NDatSave(ini.c_str(), "Mine", &step));
    EXPECT_FALSE(NDatDelete(ini.c_str(), "Mine"));
    EXPECT_FALSE(NDatExists(ini.c_str(), "Mine", nullptr));
  }
  EXPECT_EQ(ReadWholeFile(ini), content);
  EXPECT_FALSE(NDatSave(directory.Path().string().c_str(), "Mine", &step));
  EXPECT_FALSE(NDatSave((directory / "missing").string().append("\\host.ini").c_str(), "Mine", &step));
  EXPECT_TRUE(NDatSave(ini.c_str(), "Mine", &step));
  EXPECT_TRUE(NDatExists(ini.c_str(), "mine", nullptr));
  EXPECT_EQ(ReadWholeFile(ini).find(content), 0u);
}

TEST(Records, LookTheSameToAC) {
  const unsigned layout[] = {sizeof(PROJDATA),
                             offsetof(PROJDATA, K0),
                             offsetof(PROJDATA, bSouth),
                             offsetof(PROJDATA, Zone),
                             offsetof(PROJDATA, Alpha),
                             offsetof(PROJDATA, bUOffset),
                             offsetof(PROJDATA, Flattening),
                             offsetof(PROJDATA, iResult),
                             offsetof(PROJDATA, bWrapLon),
                             sizeof(DATUM2WGS84),
                             offsetof(DATUM2WGS84, Ellipsoid),
                             offsetof(DATUM2WGS84, PMShift),
                             offsetof(DATUM2WGS84, rx),
                             offsetof(DATUM2WGS84, Flattening),
                             sizeof(DATUMXFORM),
                             offsetof(DATUMXFORM, Step2),
                             offsetof(DATUMXFORM, bUnplottable),
                             sizeof(SEGMENT),
                             offsetof(SEGMENT, bEnd),
                             sizeof(GEOREF),
                             offsetof(GEOREF, pDst),
                             offsetof(GEOREF, Coeff)};
  ASSERT_EQ(std::size(layout), kCLayoutCount);
  for (std::size_t i = 0; i < std::size(layout); ++i) EXPECT_EQ(layout[i], kCLayout[i]) << "entry " << i;
}

#ifndef _WIN64
/// A call with the stack `shift` bytes below a multiple of 16.
bool CallShifted(decltype(&ProjForward) function, void* handle, PROJPOINT* pts, int count, int shift) {
  auto result = reinterpret_cast<std::uintptr_t>(reinterpret_cast<void*>(function));
  asm volatile(
      "movl %%esp, %%esi\n\t"
      "andl $-16, %%esp\n\t"
      "subl %[shift], %%esp\n\t"
      "pushl %[count]\n\t"
      "pushl %[pts]\n\t"
      "pushl %[handle]\n\t"
      "call *%%eax\n\t"
      "movl %%esi, %%esp"
      : "+a"(result), [handle] "+c"(handle), [pts] "+d"(pts)
      : [count] "D"(count), [shift] "b"(shift)
      : "esi", "memory", "cc", "xmm0", "xmm1", "xmm2", "xmm3", "xmm4", "xmm5", "xmm6", "xmm7");
  return (result & 0xFF) != 0;
}

// Hosts of other compilers align the stack to 4 bytes only.
TEST(Stack, NeedsNoAlignment) {
  for (const ProjectionForm& form : AllProjections()) {
    PROJDATA record = form.MakeRecord();
    void* const handle = ProjCreateProjection(&record);
    std::vector<PROJPOINT> places(40);
    for (int i = 0; i < 40; ++i) places[static_cast<std::size_t>(i)] = form.Place(i / 39.0, (i * 7 % 40) / 39.0);
    std::vector<PROJPOINT> expected = places;
    ProjForward(handle, expected.data(), 40);
    ProjInverse(handle, expected.data(), 40);
    for (const int shift : {0, 4, 8, 12}) {
      std::vector<PROJPOINT> points = places;
      EXPECT_TRUE(CallShifted(ProjForward, handle, points.data(), 40, shift));
      EXPECT_TRUE(CallShifted(ProjInverse, handle, points.data(), 40, shift));
      EXPECT_EQ(std::memcmp(points.data(), expected.data(), points.size() * sizeof(PROJPOINT)), 0) << form.parameters;
    }
    ProjDeleteProjection(handle);
  }
}
#endif

}  // namespace
}  // namespace orvex::test
