// ExactHandles - a hash table of chains, a few of which share a lock. It is empty, and needs no memory, as long as no
// handle computes exactly.
#include "support/ExactHandles.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <new>

#include "platform/Platform.h"
#include "support/Errors.h"

namespace orvex::detail {

namespace {

struct Node {
  const void* handle;
  Node* next;
};

constexpr std::size_t kChains = 1024, kLocks = 16;

constinit std::atomic<std::size_t> count{0};
constinit Node* chains[kChains] = {};
constinit std::mutex locks[kLocks];

/// The place of a handle in its chain, or where the chain ends. Holds the chain's lock.
class Place {
 public:
  explicit Place(const void* handle) noexcept
      : m_chain(Hash(handle)), m_lock(locks[m_chain % kLocks]), m_link(&chains[m_chain]) {
    while (*m_link != nullptr && (*m_link)->handle != handle) m_link = &(*m_link)->next;
  }

  bool Found() const noexcept { return *m_link != nullptr; }

  bool Insert(const void* handle) noexcept {
    Node* node = new (std::nothrow) Node{handle, nullptr};
    if (node == nullptr) return false;
    *m_link = node;
    count.fetch_add(1, std::memory_order_relaxed);
    return true;
  }

  void Remove() noexcept {
    Node* node = *m_link;
    *m_link = node->next;
    delete node;
    count.fetch_sub(1, std::memory_order_relaxed);
  }

 private:
  static std::size_t Hash(const void* handle) noexcept {
    const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(handle));
    return static_cast<std::size_t>(address * 0x9E3779B97F4A7C15 >> 54);  // Fibonacci hashing: the leading ten bits
  }

  std::size_t m_chain;
  std::lock_guard<std::mutex> m_lock;
  Node** m_link;
};

// A child process has only the thread that forked: it must find no chain locked by another one.
void HoldChains() {
  for (std::mutex& lock : locks) lock.lock();
}
void ReleaseChains() {
  for (std::mutex& lock : locks) lock.unlock();
}
[[maybe_unused]] const bool atFork = (platform::AtFork(HoldChains, ReleaseChains, ReleaseChains), true);

}  // namespace

bool IsExact(const void* handle) noexcept {
  return count.load(std::memory_order_relaxed) != 0 && Place(handle).Found();
}

bool SetExact(const void* handle, bool exact) noexcept {
  Place place(handle);
  if (place.Found() == exact) return true;
  if (exact) return place.Insert(handle);
  place.Remove();
  return true;
}

void KeepChoice(const void* original, const void* copy, const char* sourceFile, int line) {
  if (copy == nullptr) return;  // there was no memory for one
  if (!SetExact(copy, IsExact(original))) ThrowError(sourceFile, line, kMsgOutOfMemory);
}

void FreeHandle(void* handle) noexcept {
  ForgetChoice(handle);
  std::free(handle);
}

}  // namespace orvex::detail
