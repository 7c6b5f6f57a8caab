// Checksum - 64 bits that change with every bit of results.
#pragma once

#include <bit>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace orvex::test {

class Checksum {
 public:
  void Add(std::uint64_t word) { m_sum = std::rotl((m_sum ^ word) * 0x9E3779B97F4A7C15u, 29); }
  void Add(double value) { Add(__builtin_bit_cast(std::uint64_t, value)); }
  void Add(int value) { Add(static_cast<std::uint64_t>(value)); }
  template <class Point>
  void AddPoints(const std::vector<Point>& points) {
    for (const Point& p : points) {
      Add(p.x);
      Add(p.y);
    }
  }
  std::uint64_t Value() const { return m_sum; }
  void Print(const std::string& name) const { std::printf("%016" PRIx64 "  %s\n", m_sum, name.c_str()); }

 private:
  std::uint64_t m_sum = 1;
};

}  // namespace orvex::test
