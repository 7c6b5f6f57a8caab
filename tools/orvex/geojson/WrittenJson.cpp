// WrittenJson - JSON values that are written with the numbers of the text that they were read from.
#include "geojson/WrittenJson.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::tool {

namespace {

template <class Number, class... Format>
void AppendNumber(std::string& out, Number value, Format... format) {
  char text[40];
  out.append(text, std::to_chars(text, text + sizeof text, value, format...).ptr);
}

/// The shortest text that gives the value back, with a point or an exponent.
void AppendDouble(std::string& out, double value) {
  constexpr double kLeastFixed = 1e-5, kMostFixed = 1e16;
  const double size = std::abs(value);
  const bool fixed = size == 0 || (size >= kLeastFixed && size < kMostFixed);
  const std::size_t begin = out.size();
  AppendNumber(out, value, fixed ? std::chars_format::fixed : std::chars_format::scientific);
  if (fixed && out.find('.', begin) == std::string::npos) out += ".0";
}

/// Builds the value from what a parser meets one after the other.
class Builder {
 public:
  explicit Builder(Json& root) : m_next(&root) {}

  bool null() { return Add(nullptr); }
  bool boolean(bool value) { return Add(value); }
  bool number_integer(std::int64_t value) {
    return value == 0 ? AddText("-0") : Add(value);  // without a sign it is unsigned
  }
  bool number_unsigned(std::uint64_t value) { return Add(value); }
  bool number_float(double value, const std::string& text) {
    m_written.clear();
    AppendDouble(m_written, value);
    return m_written == text ? Add(value) : AddText(text);
  }
  bool string(std::string& value) { return Add(std::move(value)); }
  bool binary(Json::binary_t& /*value*/) { return false; }
  bool start_object(std::size_t /*size*/) { return Open(Json::object()); }
  bool key(std::string& name) {
    m_next = &(*m_open.back())[name];
    return true;
  }
  bool end_object() { return Close(); }
  bool start_array(std::size_t /*size*/) { return Open(Json::array()); }
  bool end_array() { return Close(); }

  template <class Exception>
  bool parse_error(std::size_t /*position*/, const std::string& /*token*/, const Exception& error) {
    throw error;
  }

 private:
  /// Where the next value belongs: behind the others of an array, else where the last key or the root is.
  Json& Place() {
    if (m_open.empty() || m_open.back()->is_object()) return *m_next;
    return m_open.back()->emplace_back();
  }

  bool Add(Json value) {
    Place() = std::move(value);
    return true;
  }

  bool AddText(std::string_view text) { return Add(Json::binary({text.begin(), text.end()})); }

  bool Open(Json container) {
    Json& place = Place();
    place = std::move(container);
    m_open.push_back(&place);
    return true;
  }

  bool Close() {
    m_open.pop_back();
    return true;
  }

  Json* m_next;               // the root, or the member with the last key
  std::vector<Json*> m_open;  // arrays and objects, each within the one before
  std::string m_written;
};

void WriteObject(std::string& out, const Json& object) {
  out += '{';
  for (const auto& [name, value] : object.items()) {
    if (out.back() != '{') out += ',';
    out += Json(name).dump();
    out += ':';
    WriteJson(out, value);
  }
  out += '}';
}

void WriteArray(std::string& out, const Json& array) {
  out += '[';
  for (const Json& value : array) {
    if (out.back() != '[') out += ',';
    WriteJson(out, value);
  }
  out += ']';
}

}  // namespace

Json ParseJson(const std::string& text) {
  Json root;
  Builder builder(root);
  Json::sax_parse(text, &builder);
  return root;
}

void WriteJson(std::string& out, const Json& value) {
  switch (value.type()) {
    case Json::value_t::object:
      return WriteObject(out, value);
    case Json::value_t::array:
      return WriteArray(out, value);
    case Json::value_t::binary:
      out.append(value.get_binary().begin(), value.get_binary().end());
      return;
    case Json::value_t::number_integer:
      return AppendNumber(out, value.get<std::int64_t>());
    case Json::value_t::number_unsigned:
      return AppendNumber(out, value.get<std::uint64_t>());
    case Json::value_t::number_float:
      return AppendDouble(out, value.get<double>());
    default:
      out += value.dump();
  }
}

bool IsNumber(const Json& value) {
  return value.is_number() || value.is_binary();
}

double NumberOf(const Json& value) {
  if (!value.is_binary()) return value.get<double>();
  const auto& binary = value.get_binary();
  const std::string text(binary.begin(), binary.end());
  double number = 0;  // also for what is too small
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace orvex::tool
