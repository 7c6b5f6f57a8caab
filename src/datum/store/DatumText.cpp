// DatumText - the text form of custom datums. Numbers are written and read without regard to the host's locale.
#include "datum/store/DatumText.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "ellipsoids/Ellipsoid.h"
#include "support/CharConv.h"
#include "support/Flag.h"
#include "support/Log.h"
#include "support/Text.h"

namespace orvex::detail {

namespace {

constexpr std::size_t kMaxValue = 255;
constexpr char kUserDefined[] = "user-defined";

bool IsPlain(char c) {
  const auto code = static_cast<unsigned char>(LowerAscii(c));  // bytes above 127 are not plain
  return code >= 32 && code <= 122 && c != ',' && c != '=' && c != '%' && c != '\\';
}

const char* MethodKeyword(DatumMethod method) {
  switch (method) {
    case DM_NOXFORM:
      return "none";
    case DM_NADCON:
      return "nadcon";
    case DM_BURSA:
      return "bursa";
    case DM_MOLODENSKY:
      return "molodensky";
    case DM_MRE:
      return "mre";
    default:
      return nullptr;
  }
}

void AppendNumber(std::string& text, double value, int decimals) {
  char digits[400];  // the largest number has 309 digits before the point
  const auto result = ToChars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
  text.append(digits, result.ptr).append(",");
}

// The number at the beginning of a text as strtod reads it in the "C" locale, 0 when there is none.
double ParseNumber(std::string_view text) {
  constexpr std::string_view kSpace = " \t\n\v\f\r";
  text.remove_prefix(std::min(text.find_first_not_of(kSpace), text.size()));
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const bool hex = text.size() > 2 && text[0] == '0' && LowerAscii(text[1]) == 'x';
  if (hex) text.remove_prefix(2);
  double value = 0;
  if (text.starts_with('-')) return 0;  // from_chars would take a second sign
  const auto format = hex ? std::chars_format::hex : std::chars_format::general;
  const auto result = FromChars(text.data(), text.data() + text.size(), value, format);
  if (result.ec == std::errc::result_out_of_range) {
    // Too small or too large? The exponent's sign tells, or, without one, whether there are digits before the point.
    std::string_view number(text.data(), static_cast<std::size_t>(result.ptr - text.data()));
    const std::size_t exponent = number.find_first_of(hex ? "pP" : "eE");
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
    value = (exponent != number.npos ? text[exponent + 1] == '-' : number.starts_with('.')) ? 0 : HUGE_VAL;
  }
  return negative ? -value : value;
}

// Fields one after the other, each without the blanks before it; empty ones after the end.
class Fields {
 public:
  explicit Fields(std::string_view text) : m_rest(text) {}

  std::string_view Next() {
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t"), m_rest.size()));
    const std::string_view field = m_rest.substr(0, m_rest.find(','));
    m_rest.remove_prefix(std::min(field.size() + 1, m_rest.size()));
    return field;
  }
  double NextNumber() { return ParseNumber(Next()); }

 private:
  std::string_view m_rest;
};

bool Is(std::string_view field, const char* keyword) {
  return EqualIgnoringCase(field, keyword);
}

}  // namespace

std::string EscapeName(std::string_view name) {
  std::string key;
  for (const char c : name) {
    if (IsPlain(c)) {
      key += c;
      continue;
    }
    char code[16];
    std::snprintf(code, sizeof code, "%%%03u", static_cast<unsigned>(static_cast<signed char>(c)));
    key += code;
  }
  return key;
}

std::string UnescapeName(std::string_view key) {
  std::string name;
  for (std::size_t i = 0; i < key.size(); ++i) {
    if (key[i] != '%' || key.size() - i < 4) {
      name += key[i];
      continue;
    }
    const unsigned code = (static_cast<unsigned>(key[i + 1]) * 10 + static_cast<unsigned>(key[i + 2])) * 10 +
                          static_cast<unsigned>(key[i + 3]) + 48;  // nothing asks whether they are digits
    name += static_cast<char>(static_cast<std::uint8_t>(code % 256));
    i += 3;
  }
  return name;
}

std::optional<std::string> DatumParamsToText(const DATUM2WGS84& params) {
  const char* keyword = MethodKeyword(params.Method);
  if (keyword == nullptr) return std::nullopt;
  std::string text = std::string(keyword) + ",";
  const bool parametric = params.Method == DM_MOLODENSKY || params.Method == DM_BURSA;
  if (params.Method != DM_NOXFORM) {
    const char* ellipsoid = kUserDefined;
    double a = params.MajorRadius, f = params.Flattening;
    if (params.Ellipsoid != ET_USER_DEFINED) {
      ellipsoid = EllipsoidName(params.Ellipsoid);
      if (ellipsoid == nullptr) return std::nullopt;
      a = MajorRadiusOf(params.Ellipsoid);
      f = FlatteningOf(params.Ellipsoid);
    }
    text.append(IsSet(params.bInverse) ? "1," : "0,").append(EscapeName(ellipsoid)).append(",");
    if (parametric) {
      AppendNumber(text, a, 10);
      AppendNumber(text, f, 10);
      AppendNumber(text, params.PMShift, 6);
      for (const double shift : {params.dx, params.dy, params.dz}) AppendNumber(text, shift, 10);
    }
    if (params.Method == DM_BURSA) {
      for (const double value : {params.rx, params.ry, params.rz, params.k}) AppendNumber(text, value, 10);
    }
  }
  if (text.size() > kMaxValue) return std::nullopt;
  return text;
}

bool TextToDatumParams(const char* text, DATUM2WGS84* params) {
  Trace("TextToDatumParams(\"%s\", pParams==%p)\n", text, static_cast<void*>(params));
  Fields fields(text);
  const std::string_view method = fields.Next();
  if (Is(method, "none")) {
    params->Method = DM_NOXFORM;
    return true;
  }
  DATUM2WGS84 read = *params;
  if (Is(method, "bursa")) {
    read.Method = DM_BURSA;
  } else if (Is(method, "molodensky")) {
    read.Method = DM_MOLODENSKY;
  } else {
    return false;
  }
  const std::string_view inverse = fields.Next();
  if (!inverse.starts_with('0') && !inverse.starts_with('1')) return false;
  read.bInverse = inverse.front() == '1';
  const std::string ellipsoid = UnescapeName(fields.Next());
  EllipsoidType type = ET_USER_DEFINED;
  if (!EqualIgnoringCase(ellipsoid.c_str(), kUserDefined) && !FindEllipsoid(ellipsoid.c_str(), type)) return false;
  read.Ellipsoid = type;
  read.MajorRadius = fields.NextNumber();
  read.Flattening = fields.NextNumber();
  read.PMShift = fields.NextNumber();
  read.dx = fields.NextNumber();
  read.dy = fields.NextNumber();
  read.dz = fields.NextNumber();
  if (read.Method == DM_BURSA) {
    read.rx = fields.NextNumber();
    read.ry = fields.NextNumber();
    read.rz = fields.NextNumber();
    read.k = fields.NextNumber();
  }
  *params = read;
  return true;
}

}  // namespace orvex::detail
