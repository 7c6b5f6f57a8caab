// FpEnvironment for each processor, whatever the operating system: x86 with SSE, 64-bit ARM, WebAssembly (which has no
// environment), and by way of the C library for all others.
//
// Assembly statements clobber memory, so that the compiler moves no load or store of a coordinate across them.
#include "platform/FpEnvironment.h"

namespace orvex::platform {

#if defined(__SSE__)

namespace {

// Exception bits stand in the same order in the x87 status and control words and in MXCSR (masks there 7 bits up).
constexpr unsigned kInvalid = 0x01, kDenormal = 0x02, kZeroDivide = 0x04, kOverflow = 0x08, kUnderflow = 0x10,
                   kInexact = 0x20, kAll = 0x3F;
constexpr unsigned kMxcsr = 0x1F80;            // nearest, subnormals kept, all masked, status clear
constexpr std::uint16_t kX87Control = 0x037F;  // nearest, all masked, 64-bit mantissa
constexpr unsigned kX87Flags = 0xFF;           // of the status word; the rest says what the last comparison found

// The library's arithmetic is SSE everywhere and a 64-bit one runs no x87 instruction. Runtimes do: mingw's functions
// are x87 code that wants a 64-bit mantissa (hosts of other compilers have 53), and 32-bit functions return in st(0).
#if defined(__x86_64__) && !defined(_WIN32)
constexpr bool kRuntimeUsesX87 = false;
#else
constexpr bool kRuntimeUsesX87 = true;
#endif

unsigned Mxcsr() {
  unsigned value = 0;
  asm volatile("stmxcsr %0" : "=m"(value) : : "memory");
  return value;
}
void SetMxcsr(unsigned value) {
  asm volatile("ldmxcsr %0" : : "m"(value) : "memory");
}
std::uint16_t X87Control() {
  std::uint16_t value = 0;
  asm volatile("fnstcw %0" : "=m"(value) : : "memory");
  return value;
}
void SetX87Control(std::uint16_t value) {
  asm volatile("fldcw %0" : : "m"(value) : "memory");
}
std::uint16_t X87Status() {
  std::uint16_t value = 0;
  asm volatile("fnstsw %0" : "=am"(value) : : "memory");
  return value;
}
void ClearX87Status() {
  asm volatile("fnclex" : : : "memory");
}

/// Control word and flags together, the only way to set flags; they fire no earlier than the host's next instruction.
void SetX87(std::uint16_t control, unsigned flags) {
  struct {
    std::uint32_t control, status, others[5];
  } image;
  asm volatile("fnstenv %0" : "=m"(image) : : "memory");
  image.control = (image.control & ~0xFFFFu) | control;
  image.status = (image.status & ~kX87Flags) | flags;
  asm volatile("fldenv %0" : : "m"(image) : "memory");
}

/// Whether the x87 unit has a part in it: the runtime uses it, or the host has set it in some way of its own.
bool MindsX87(std::uint16_t hostControl) {
  return kRuntimeUsesX87 || hostControl != kX87Control;
}

}  // namespace

FpEnvironment::FpEnvironment() noexcept : m_mxcsr(Mxcsr()), m_x87Control(X87Control()) {
  m_hostTraps = (~unsigned{m_x87Control} | ~(m_mxcsr >> 7)) & kAll;
  if (MindsX87(m_x87Control)) {
    m_x87Status = X87Status() & kX87Flags;
    if (HostTraps() && m_x87Status != 0) ClearX87Status();  // before the control word, which fires what is pending
    if (m_x87Control != kX87Control) SetX87Control(kX87Control);
  }
  if (HostTraps() || (m_mxcsr & ~kAll) != kMxcsr) SetMxcsr(kMxcsr);
}

FpEnvironment::~FpEnvironment() {
  if (MindsX87(m_x87Control)) {
    if ((X87Status() & kX87Flags) != m_x87Status) {
      SetX87(m_x87Control, m_x87Status);
    } else if (m_x87Control != kX87Control) {
      SetX87Control(m_x87Control);
    }
  }
  if (Mxcsr() != m_mxcsr) SetMxcsr(m_mxcsr);
}

unsigned FpEnvironment::Raised() const noexcept {
  return Mxcsr() | (MindsX87(m_x87Control) ? X87Status() : 0u);
}

void FpEnvironment::Clear() noexcept {
  if (MindsX87(m_x87Control) && (X87Status() & kAll) != 0) ClearX87Status();
  if (Mxcsr() != kMxcsr) SetMxcsr(kMxcsr);
}

#elif defined(__aarch64__)

namespace {

// Flags in FPSR; the bits that enable their traps stand 8 up in FPCR (most processors have none).
constexpr unsigned kInvalid = 0x01, kZeroDivide = 0x02, kOverflow = 0x04, kUnderflow = 0x08, kInexact = 0x10,
                   kDenormal = 0x80, kAll = 0x9F;
constexpr std::uint64_t kControl = 0;  // nearest, subnormals kept, all masked

std::uint64_t Control() {
  std::uint64_t value = 0;
  asm volatile("mrs %0, fpcr" : "=r"(value) : : "memory");
  return value;
}
void SetControl(std::uint64_t value) {
  asm volatile("msr fpcr, %0" : : "r"(value) : "memory");
}
std::uint64_t Status() {
  std::uint64_t value = 0;
  asm volatile("mrs %0, fpsr" : "=r"(value) : : "memory");
  return value;
}
void SetStatus(std::uint64_t value) {
  asm volatile("msr fpsr, %0" : : "r"(value) : "memory");
}

}  // namespace

FpEnvironment::FpEnvironment() noexcept : m_control(Control()), m_status(Status()) {
  m_hostTraps = static_cast<unsigned>(m_control >> 8) & kAll;
  if (m_control != kControl) SetControl(kControl);
  ClearStatus();
}

FpEnvironment::~FpEnvironment() {
  if (Status() != m_status) SetStatus(m_status);
  if (m_control != kControl) SetControl(m_control);
}

unsigned FpEnvironment::Raised() const noexcept {
  return static_cast<unsigned>(Status());
}

void FpEnvironment::Clear() noexcept {
  SetStatus(Status() & ~std::uint64_t{kAll});
}

#elif defined(__wasm__)

namespace {

constexpr unsigned kInvalid = 0, kZeroDivide = 0, kOverflow = 0, kUnderflow = 0, kInexact = 0, kDenormal = 0;

}  // namespace

FpEnvironment::FpEnvironment() noexcept = default;
FpEnvironment::~FpEnvironment() = default;

unsigned FpEnvironment::Raised() const noexcept {
  return 0;
}

void FpEnvironment::Clear() noexcept {}

#else

namespace {

constexpr unsigned kInvalid = FE_INVALID, kZeroDivide = FE_DIVBYZERO, kOverflow = FE_OVERFLOW,
                   kUnderflow = FE_UNDERFLOW, kInexact = FE_INEXACT, kDenormal = 0;

}  // namespace

FpEnvironment::FpEnvironment() noexcept {
#ifdef __GLIBC__
  const int traps = fegetexcept();
  if (traps > 0) m_hostTraps = static_cast<unsigned>(traps);
#endif
  std::fegetenv(&m_environment);
  std::fesetenv(FE_DFL_ENV);
}

FpEnvironment::~FpEnvironment() {
  std::fesetenv(&m_environment);
}

unsigned FpEnvironment::Raised() const noexcept {
  return static_cast<unsigned>(std::fetestexcept(FE_ALL_EXCEPT));
}

void FpEnvironment::Clear() noexcept {
  std::feclearexcept(FE_ALL_EXCEPT);
}

#endif

unsigned FpEnvironment::FaultCode(unsigned exceptions) noexcept {
  if (exceptions & kInvalid) return 0xC0000090;
  if (exceptions & kZeroDivide) return 0xC000008E;
  if (exceptions & kOverflow) return 0xC0000091;
  if (exceptions & kUnderflow) return 0xC0000093;
  if (exceptions & kDenormal) return 0xC000008D;
  if (exceptions & kInexact) return 0xC000008F;
  return 0;
}

}  // namespace orvex::platform
