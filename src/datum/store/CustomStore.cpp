// CustomStore - built-in datums and those of the host's INI file as one list by name.
// Each call reads the section "Custom Datums" afresh; only the list of the names that were asked for one by one is
// kept, for as long as the file stays as it is. Every failure is a false.
#include <cstring>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <orvex/datum.h>

#include "datum/DatumCatalogue.h"
#include "datum/store/DatumText.h"
#include "platform/Platform.h"
#include "support/FpGuard.h"
#include "support/Log.h"
#include "support/Text.h"

namespace orvex {

namespace {

using detail::DatumParamsToText;
using detail::EqualIgnoringCase;
using detail::EscapeName;
using detail::LogPrintf;
using detail::LogText;
using detail::TextToDatumParams;
using detail::UnescapeName;

constexpr int kBuiltIn = DT_COUNT;
constexpr char kSection[] = "Custom Datums";
constexpr std::size_t kSectionCapacity = 32767;
constexpr std::size_t kLeastLength = 3;  // a section with less counts as empty
constexpr std::size_t kNameCapacity = 260;
constexpr std::size_t kMaxPrefix = 259;  // characters of "name=" that a search compares

// The custom datums of a file: one entry "key=value" each, in file order.
class Section {
 public:
  explicit Section(const char* ini) : m_ini(ini) {
    std::vector<char> buffer(kSectionCapacity);
    const auto length = platform::ReadProfileSection(ini, kSection, buffer.data(), buffer.size());
    m_read = length.has_value();
    if (!length) m_whole = false;
    if (!length || *length == 0) return;
    if (*length < kLeastLength) {
      m_stray = buffer.data();
      return;
    }
    m_whole = *length < kSectionCapacity - 2;
    const char* end = buffer.data() + *length;
    for (const char* entry = buffer.data(); entry < end; entry += std::strlen(entry) + 1) m_entries.emplace_back(entry);
    if (!m_whole) m_entries.pop_back();  // cut by the end of the buffer
  }

  const std::vector<std::string>& Entries() const { return m_entries; }

  // Whether the file could be read, or is missing.
  bool IsRead() const { return m_read; }

  // First entry whose beginning is "key=" without regard to case.
  std::optional<std::size_t> Find(std::string_view name) const {
    const std::string prefix = Prefix(name);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
      if (EqualIgnoringCase(std::string_view(m_entries[i]).substr(0, prefix.size()), prefix)) return i;
    }
    return std::nullopt;
  }

  bool Set(std::string_view name, const std::string& value) {
    const std::string key = EscapeName(name);
    if (!KeyComesBack(key)) return false;
    std::string entry = key + "=" + value;
    if (const auto index = Find(name)) {
      m_entries[*index] = std::move(entry);
    } else {
      m_entries.push_back(std::move(entry));
    }
    return true;
  }

  void Remove(std::size_t index) { m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(index)); }

  // An empty section is not written: the last datum cannot be removed. A section that could not be read, or only in
  // part, is left alone, for entries would be lost.
  bool Write() const {
    if (!m_whole) return false;
    if (m_entries.empty()) return true;
    std::string text;
    if (!m_stray.empty()) text.append(m_stray).push_back('\0');
    for (const std::string& entry : m_entries) text.append(entry).push_back('\0');
    return text.size() < kSectionCapacity - 2 && platform::WriteProfileSection(m_ini, kSection, text.c_str());
  }

 private:
  static std::string Prefix(std::string_view name) { return (EscapeName(name) + "=").substr(0, kMaxPrefix); }

  // Whether an INI file gives the key back as it is: it must be neither a comment nor a section header, nor begin or
  // end with blanks, nor be too long to be searched for.
  static bool KeyComesBack(const std::string& key) {
    return !key.empty() && key.size() < kMaxPrefix && key.front() != ';' && key.front() != '[' && key.front() != ' ' &&
           key.back() != ' ';
  }

  const char* m_ini;
  bool m_read = false;
  bool m_whole = true;  // all that the file holds has been read
  std::string m_stray;  // a line too short to count as an entry; kept in the file
  std::vector<std::string> m_entries;
};

// The entries of the file that was listed last, so that going through all names of a file reads it once.
class Listing {
 public:
  using Entries = std::shared_ptr<const std::vector<std::string>>;

  Entries Of(const char* ini) {
    const auto state = platform::SettledState(ini);
    if (Entries known = state ? Known(*state) : nullptr) return known;
    const Section section(ini);
    Entries entries = std::make_shared<const std::vector<std::string>>(section.Entries());
    if (state && section.IsRead() && platform::SettledState(ini) == state) Keep(*state, entries);
    return entries;
  }

  std::mutex& Mutex() { return m_mutex; }

 private:
  Entries Known(const platform::FileState& state) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_state == state ? m_entries : nullptr;
  }
  void Keep(const platform::FileState& state, Entries entries) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_state = state;
    m_entries.swap(entries);
  }

  std::mutex m_mutex;
  std::optional<platform::FileState> m_state;
  Entries m_entries;
};

Listing& TheListing() {
  static Listing listing;
  return listing;
}

// A child process has only the thread that forked: it must not find the listing locked by another one.
void HoldListing() {
  TheListing().Mutex().lock();
}
void ReleaseListing() {
  TheListing().Mutex().unlock();
}
[[maybe_unused]] const bool g_atFork = [] {
  TheListing();
  platform::AtFork(HoldListing, ReleaseListing, ReleaseListing);
  return true;
}();

std::optional<DatumType> BuiltIn(const char* name) {
  DatumType datum = DT_USER_DEFINED;
  return detail::FindDatumNamed(name, &datum) ? std::optional(datum) : std::nullopt;
}

bool CustomParams(const char* ini, const char* name, DATUM2WGS84* params) {
  if (ini == nullptr) return false;
  const Section section(ini);
  const auto index = section.Find(name);
  if (!index) return false;
  const std::string& entry = section.Entries()[*index];
  const std::size_t equals = entry.find('=');
  return equals != entry.npos && TextToDatumParams(entry.c_str() + equals + 1, params);
}

// Runs an operation on the store; running out of memory is a failure like any other.
template <typename Result, typename Operation>
Result Guarded(Result failure, Operation operation) {
  detail::FpGuard guard;
  try {
    return operation();
  } catch (const std::exception&) {
    return failure;
  }
}

// Runs a change on the section while nobody else changes the file: what another thread or program stores meanwhile
// would be lost.
template <typename Change>
bool ChangeSection(const char* ini, Change change) {
  return Guarded(false, [&] {
    const platform::ProfileLock lock(ini);
    if (!lock.IsHeld()) return false;
    Section section(ini);
    return change(section);
  });
}

}  // namespace

int ORVEX_CALL NDatNumDatums(const char* ini) {
  LogPrintf("NDatNumDatums(ini=\"%s\")\n", LogText(ini));
  if (ini == nullptr) return kBuiltIn;
  return Guarded(kBuiltIn, [&] { return kBuiltIn + static_cast<int>(Section(ini).Entries().size()); });
}

bool ORVEX_CALL NDatEnumDatumName(const char* ini, char* name, int index) {
  LogPrintf("NDatEnumDatumName(ini=\"%s\", name=%p, index=%d)\n", LogText(ini), static_cast<void*>(name), index);
  if (index < 0 || name == nullptr) return false;
  if (index < kBuiltIn) {
    detail::CopyDatumName(static_cast<DatumType>(index), name);
    return true;
  }
  if (ini == nullptr) return false;
  return Guarded(false, [&] {
    const Listing::Entries entries = TheListing().Of(ini);
    const auto custom = static_cast<std::size_t>(index - kBuiltIn);
    if (custom >= entries->size()) return false;
    const std::string& entry = (*entries)[custom];
    const std::string unescaped = UnescapeName(std::string_view(entry).substr(0, entry.find('=')));
    detail::CopyText(name, unescaped.c_str(), kNameCapacity);
    return true;
  });
}

bool ORVEX_CALL NDatExists(const char* ini, const char* name, int* index) {
  LogPrintf("NDatExists(ini=\"%s\", name=\"%s\", index=%p)\n", LogText(ini), LogText(name), static_cast<void*>(index));
  if (name == nullptr) return false;
  std::optional<int> found;
  if (const auto datum = BuiltIn(name)) {
    found = *datum;
  } else if (ini != nullptr) {
    found = Guarded(std::optional<int>(), [&] {
      const auto entry = Section(ini).Find(name);
      return entry ? std::optional(static_cast<int>(*entry) + kBuiltIn) : std::nullopt;
    });
  }
  if (found && index != nullptr) *index = *found;
  return found.has_value();
}

bool ORVEX_CALL NDatIsBuiltIn(const char* ini, const char* name, DatumType* datum) {
  LogPrintf("NDatIsBuiltIn(ini=\"%s\", name=\"%s\", datum=%p)\n", LogText(ini), LogText(name),
            static_cast<void*>(datum));
  if (name == nullptr) return false;
  const auto found = BuiltIn(name);
  if (found && datum != nullptr) *datum = *found;
  return found.has_value();
}

bool ORVEX_CALL NDatGetDatumParams(const char* ini, const char* name, DATUM2WGS84* params) {
  LogPrintf("NDatGetDatumParams(ini=\"%s\", name=\"%s\", params=%p)\n", LogText(ini), LogText(name),
            static_cast<void*>(params));
  if (name == nullptr || params == nullptr) return false;
  if (const auto datum = BuiltIn(name)) return detail::LookUpStep(*datum, detail::DatumRole::Destination, *params);
  return Guarded(false, [&] { return CustomParams(ini, name, params); });
}

bool ORVEX_CALL NDatGetDatumMethod(const char* ini, const char* name, DatumMethod* method) {
  LogPrintf("NDatGetDatumMethod(ini=\"%s\", name=\"%s\", method=%p)\n", LogText(ini), LogText(name),
            static_cast<void*>(method));
  if (name == nullptr || method == nullptr) return false;
  if (const auto datum = BuiltIn(name)) return detail::MethodOf(*datum, method);
  return Guarded(false, [&] {
    DATUM2WGS84 params{};
    if (!CustomParams(ini, name, &params)) return false;
    *method = params.Method;
    return true;
  });
}

bool ORVEX_CALL NDatReversible(const char* ini, const char* name) {
  LogPrintf("NDatReversible(ini=\"%s\", name=\"%s\")\n", LogText(ini), LogText(name));
  if (name == nullptr) return false;
  if (const auto datum = BuiltIn(name)) return detail::IsReversible(*datum);
  DATUM2WGS84 params{};  // what can be read back, can be run backwards: "none", Bursa-Wolf and Molodensky
  return Guarded(false, [&] { return CustomParams(ini, name, &params); });
}

bool ORVEX_CALL NDatSave(const char* ini, const char* name, const DATUM2WGS84* params) {
  LogPrintf("NDatSave(ini=\"%s\", name=\"%s\", params=%p)\n", LogText(ini), LogText(name),
            static_cast<const void*>(params));
  if (ini == nullptr || name == nullptr || params == nullptr || BuiltIn(name)) return false;
  return ChangeSection(ini, [&](Section& section) {
    const auto value = DatumParamsToText(*params);
    return value && section.Set(name, *value) && section.Write();
  });
}

bool ORVEX_CALL NDatDelete(const char* ini, const char* name) {
  LogPrintf("NDatDelete(ini=\"%s\", name=\"%s\")\n", LogText(ini), LogText(name));
  if (ini == nullptr || name == nullptr || BuiltIn(name)) return false;
  return ChangeSection(ini, [&](Section& section) {
    const auto index = section.Find(name);
    if (!index) return false;
    section.Remove(*index);
    return section.Write();
  });
}

}  // namespace orvex
