// Fuzzer of the file of custom datums: any bytes are listed, read, added to and taken from, and nothing else in the
// list changes. The input: the name to save on its first line, the file behind it.
#include <algorithm>
#include <map>

#include "Files.h"
#include "Input.h"

using namespace orvex;
using fuzz::Expect;

namespace {

constexpr int kBuiltIn = 254, kMost = 40;

/// The custom datums by name as they are read; of several under one name the first counts.
std::map<std::string, std::string> ReadAll(const char* ini) {
  std::map<std::string, std::string> datums;
  const int end = std::min(NDatNumDatums(ini), kBuiltIn + kMost);
  Expect(end >= kBuiltIn, "the built-in datums are always there");
  for (int i = kBuiltIn; i < end; ++i) {
    std::vector<char> name(260);
    if (!NDatEnumDatumName(ini, name.data(), i)) continue;
    DATUM2WGS84 params{};
    DatumMethod method{};
    const bool readable = NDatGetDatumParams(ini, name.data(), &params);
    if (!readable && std::strlen(name.data()) == 1) continue;  // a stray character, no datum where it stands alone
    std::string bytes(1, static_cast<char>(readable));
    bytes += static_cast<char>(NDatGetDatumMethod(ini, name.data(), &method));
    NDatReversible(ini, name.data());
    bytes.append(reinterpret_cast<const char*>(&params), sizeof params);
    datums.emplace(name.data(), bytes);
  }
  return datums;
}

std::string Lower(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return text;
}

void ExpectKept(const std::map<std::string, std::string>& before, const std::map<std::string, std::string>& after,
                const std::string& but) {
  for (const auto& [name, bytes] : before) {
    if (Lower(name) == Lower(but)) continue;
    const auto same = after.find(name);
    Expect(same != after.end() && same->second == bytes, "the other datums are kept");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  const std::string name = in.Line().c_str();  // NOLINT(readability-redundant-string-cstr): up to the first zero
  const std::string ini = fuzz::Files().Write("host.ini", in.Rest());
  const auto before = ReadAll(ini.c_str());
  DATUM2WGS84 step{};
  step.Method = DM_MOLODENSKY;
  step.Ellipsoid = ET_WGS_84;
  step.dx = 1.5;
  int index = 0;
  const bool full = before.size() + 1 >= kMost;  // the list would be cut off elsewhere
  if (NDatSave(ini.c_str(), name.c_str(), &step)) {
    Expect(NDatExists(ini.c_str(), name.c_str(), &index) && index >= kBuiltIn, "what was saved is there");
    DATUM2WGS84 read{};
    Expect(NDatGetDatumParams(ini.c_str(), name.c_str(), &read) && +read.dx == +step.dx, "as it was saved");
    const auto after = ReadAll(ini.c_str());
    if (!full) ExpectKept(before, after, name);
    NDatDelete(ini.c_str(), name.c_str());
    if (!full) ExpectKept(before, ReadAll(ini.c_str()), name);
  } else {
    Expect(ReadAll(ini.c_str()) == before, "a save that fails changes nothing");
  }
  return 0;
}
