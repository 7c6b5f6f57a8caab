// HostEnvironment - the floating-point environments in which a host may call, set and read in the processor's own
// registers: the C library's functions know less than a host can do.
#pragma once

#include <cstdint>
#include <ostream>
#include <vector>

namespace orvex::test {

/// Control and status registers, and how to have them.
struct HostEnvironment {
  const char* name = "";
#if defined(__SSE__)
  std::uint16_t control = 0x037F, status = 0;  // of the x87 unit
  std::uint32_t mxcsr = 0x1F80;
#elif defined(__aarch64__)
  std::uint64_t control = 0, status = 0;
#endif

  bool operator==(const HostEnvironment& other) const {
#if defined(__SSE__)
    return control == other.control && status == other.status && mxcsr == other.mxcsr;
#elif defined(__aarch64__)
    return control == other.control && status == other.status;
#else
    return true;
#endif
  }
  friend std::ostream& operator<<(std::ostream& out, const HostEnvironment& e) {
    out << std::hex;
#if defined(__SSE__)
    out << "x87 " << e.control << " " << e.status << ", MXCSR " << e.mxcsr;
#elif defined(__aarch64__)
    out << "FPCR " << e.control << ", FPSR " << e.status;
#endif
    return out << std::dec;
  }

  static HostEnvironment Now() {
    HostEnvironment e;
#if defined(__SSE__)
    asm volatile("fnstcw %0" : "=m"(e.control) : : "memory");
    asm volatile("fnstsw %0" : "=m"(e.status) : : "memory");
    asm volatile("stmxcsr %0" : "=m"(e.mxcsr) : : "memory");
    e.status &= 0x3F;  // the exceptions
#elif defined(__aarch64__)
    asm volatile("mrs %0, fpcr" : "=r"(e.control) : : "memory");
    asm volatile("mrs %0, fpsr" : "=r"(e.status) : : "memory");
#endif
    return e;
  }
  void Set() const {
#if defined(__SSE__)
    struct {
      std::uint32_t words[7];
    } image;
    asm volatile("fnstenv %0" : "=m"(image) : : "memory");
    image.words[0] = (image.words[0] & ~0xFFFFu) | control;
    image.words[1] = (image.words[1] & ~0xFFu) | status;
    asm volatile("fldenv %0" : : "m"(image) : "memory");
    asm volatile("ldmxcsr %0" : : "m"(mxcsr) : "memory");
#elif defined(__aarch64__)
    asm volatile("msr fpcr, %0" : : "r"(control) : "memory");
    asm volatile("msr fpsr, %0" : : "r"(status) : "memory");
#endif
  }
};

/// Calls under an environment and answers what it is afterwards.
template <class Call>
HostEnvironment Under(const HostEnvironment& host, Call call) {
  const HostEnvironment own = HostEnvironment::Now();
  host.Set();
  call();
  const HostEnvironment after = HostEnvironment::Now();
  own.Set();
  return after;
}

/// The usual environment and those that only differ in how numbers come out.
inline std::vector<HostEnvironment> UntrappedHosts() {
#if defined(__SSE__)
  return {{"usual", 0x037F, 0, 0x1F80},
          {"after arithmetic", 0x037F, 0x20, 0x1FA0},
          {"downward", 0x077F, 0, 0x3F80},
          {"upward", 0x0B7F, 0, 0x5F80},
          {"toward zero", 0x0F7F, 0, 0x7F80},
          {"upward in SSE alone", 0x037F, 0, 0x5F80},
          {"upward in x87 alone", 0x0B7F, 0, 0x1F80},
          {"flush to zero", 0x037F, 0, 0x9F80},
          {"denormals are zero", 0x037F, 0, 0x1FC0},
          {"both", 0x037F, 0, 0x9FC0},
          {"53 bits", 0x027F, 0, 0x1F80},
          {"24 bits, everything raised", 0x007F, 0x3F, 0x1FBF},
          {"all at once", 0x0A7F, 0x15, 0xDFD5}};
#elif defined(__aarch64__)
  constexpr std::uint64_t kUp = 1 << 22, kDown = 2 << 22, kZero = 3 << 22, kFlush = 1 << 24, kDefaultNaN = 1 << 25;
  return {{"usual", 0, 0},
          {"after arithmetic", 0, 0x10},
          {"upward", kUp, 0},
          {"downward", kDown, 0},
          {"toward zero", kZero, 0},
          {"flush to zero", kFlush, 0},
          {"default NaN, everything raised", kDefaultNaN, 0x9F},
          {"all at once", kUp | kFlush | kDefaultNaN, 0x15}};
#else
  return {{"usual"}};
#endif
}

/// Hosts that trap divisions by zero, invalid operations and overflows; none where the processor cannot.
inline std::vector<HostEnvironment> TrappingHosts() {
#if defined(__SSE__)
  return {{"traps in both units", 0x0372, 0, 0x1900},
          {"traps in x87 alone", 0x0372, 0, 0x1F80},
          {"traps in SSE alone", 0x037F, 0, 0x1900},
          {"traps, upward, flush to zero, inexact raised", 0x0B72, 0x20, 0xD920}};
#elif defined(__aarch64__)
  const HostEnvironment host{"traps", 0x700, 0};
  if (Under(host, [] {}) == host) return {host};
  return {};
#else
  return {};
#endif
}

}  // namespace orvex::test
