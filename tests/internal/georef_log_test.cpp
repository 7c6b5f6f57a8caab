// The georeferencing functions' log: the entry texts, two of which name another function, and the fits' control lines.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <orvex/georef.h>

#include "support/Log.h"

namespace orvex::test {
namespace {

// Writes @ for every pointer of an entry line; the numbers there have one digit.
std::string WithoutPointers(std::string line) {
  if (line.rfind("Control", 0) == 0) return line;
  for (std::size_t at = line.find('='); at != std::string::npos; at = line.find('=', at + 1)) {
    const std::size_t end = line[at + 1] == '(' ? at + 6 : line.find_first_of(",)", at);  // some write "(nil)"
    if (end - at <= 2) continue;
    line.erase(at + 1, end - at - 1);
    line.insert(at + 1, 1, '@');
  }
  return line;
}

// Lines written to the log, without the mark of the trace.
template <class Calls>
std::vector<std::string> Logged(Calls calls) {
  const std::string file = testing::TempDir() + std::to_string(std::random_device{}()) + ".log";
  std::remove(file.c_str());
  detail::LogSetup(true, file.c_str());
  calls();
  detail::LogSetup(false, nullptr);
  std::vector<std::string> lines;
  std::ifstream in(file, std::ios::binary);
  for (std::string line; std::getline(in, line);) {
    EXPECT_EQ(line.rfind("CTRACE:  ", 0), 0u) << line;
    EXPECT_EQ(line.back(), '\r');
    lines.push_back(WithoutPointers(line.substr(9, line.size() - 10)));
  }
  std::remove(file.c_str());
  return lines;
}

TEST(GeorefLog, EntriesAndControlLines) {
  GEOREFPOINT src[] = {{0, 0}, {10, 0.5}, {-4, 1234567.891}}, dst[] = {{1, 2}, {3, 4}, {5, 66666.666}};
  GEOREF g{};
  g.pSrc = src;
  g.pDst = dst;
  g.nControls = 3;
  const std::vector<std::string> controls{"Control  0: sx=  0.00 sy=  0.00 dx=  1.00 dy=  2.00",
                                          "Control  1: sx= 10.00 sy=  0.50 dx=  3.00 dy=  4.00",
                                          "Control  2: sx= -4.00 sy=1234567.89 dx=  5.00 dy=66666.67"};
  const auto fitted = [&](const char* entry, const char* heading) {
    std::vector<std::string> lines{"RefCreateSystem(pRefData=@)", heading};
    if (*entry != '\0') lines.insert(lines.begin(), entry);
    lines.insert(lines.end(), controls.begin(), controls.end());
    lines.push_back("RefDeleteSystem(hRef=@)");
    return lines;
  };
  EXPECT_EQ(Logged([&] { RefDeleteSystem(RefCreateSystem(&g)); }), fitted("", "RefInitializeHelmert"));
  EXPECT_EQ(Logged([&] { RefControlsToCoeff(&g); }), fitted("RefCoeffToControls(pRefData=@)", "RefInitializeOrder3"));
  CGeorefTransform transform(&g);  // of coefficients now; Create deletes the present handle first
  EXPECT_EQ(Logged([&] { transform.Create(&g); }),
            (std::vector<std::string>{"RefDeleteSystem(hRef=@)", "RefCreateSystem(pRefData=@)"}));
  EXPECT_EQ(
      Logged([&] {
        RefComputeError(nullptr, nullptr, nullptr);
        RefCoeffToControls(nullptr, 3, 4);
        RefResize(nullptr, 1, 2, 3, 4);
        RefAllocControls(nullptr, 7);
        RefGetHandleInfo(nullptr, nullptr);
      }),
      (std::vector<std::string>{"fefComputeError(hRef=@, pTotalError=@, pControlError=@)",
                                "RefCoeffToControls(pRefData=@, iWidth=3, iHeight=4)",
                                "RefResize(pRefData=@, iOldW=1, iOldH=2, iNewW=3, iNewH=4)",
                                "RefAllocControls(pRefData=@, nControls=7)", "RefGetHandleInfo(hRef=@, pGeoRef=@)"}));
}

}  // namespace
}  // namespace orvex::test
