// DatumOptions - naming a datum on the command line.
#include "DatumOptions.h"

#include "Failure.h"
#include "Names.h"

namespace orvex::tool {

namespace {

const char* IniOrNull(const std::string& ini) {
  return ini.empty() ? nullptr : ini.c_str();
}

/// Fills one side of the record: a number for a built-in datum, the parameters for a custom one.
void Choose(const std::string& text, const std::string& ini, DatumType& datum, DATUM2WGS84& step) {
  if (!text.empty() && text.find_first_not_of("0123456789") == std::string::npos) {
    const int number = ParseInteger(text, "datum");
    if (DatGetDatumFromPOSCNumber(&datum, number)) return;
    datum = static_cast<DatumType>(number);
    DatumMethod method{};
    if (number >= 1 && DatGetDatumMethod(datum, &method)) return;
    throw Failure("no datum has the number or POSC code " + text);
  }
  const std::vector<std::string> names = DatumNames(ini);
  const std::size_t index = FindName(names, text, "datum");
  if (index == 0) throw Failure("\"User Defined\" names no datum; store it with: orvex datum add");
  datum = static_cast<DatumType>(index);
  if (index < static_cast<std::size_t>(DatNumDatums())) return;
  datum = DT_USER_DEFINED;
  if (!NDatGetDatumParams(IniOrNull(ini), names[index].c_str(), &step)) {
    throw Failure("the entry of the custom datum \"" + names[index] + "\" cannot be read");
  }
}

}  // namespace

std::vector<std::string> DatumNames(const std::string& ini) {
  std::vector<std::string> names;
  char name[260];
  for (int i = 0; NDatEnumDatumName(IniOrNull(ini), name, i); ++i) names.emplace_back(name);
  return names;
}

DatumConversion::DatumConversion(const std::string& from, const std::string& to, const std::string& ini) {
  DATUMXFORM xform{};
  DatumType source{}, destination{};
  DATUM2WGS84 step1{}, step2{};
  Choose(from, ini, source, step1);
  Choose(to, ini, destination, step2);
  if (destination != DT_USER_DEFINED && !DatReversible(destination)) {
    DatumMethod method{};
    DatGetDatumMethod(destination, &method);
    if (method != DM_NTV2) throw Failure("\"" + to + "\" can only be converted from");
  }
  step2.bInverse = !step2.bInverse;  // a custom datum is stored as it leads to WGS 84
  xform.SrcDatum = source;
  xform.DestDatum = destination;
  xform.Step1 = step1;
  xform.Step2 = step2;
  m_transform.Create(&xform);
}

void DatumConversion::Convert(std::vector<PROJPOINT>& points) {
  static_assert(sizeof(DATUMPOINT) == sizeof(PROJPOINT));
  if (!m_transform.Convert(reinterpret_cast<DATUMPOINT*>(points.data()), static_cast<int>(points.size()))) {
    throw Failure("the datum conversion failed");
  }
}

}  // namespace orvex::tool
