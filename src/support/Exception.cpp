// shr::Exception - out of line so that one type information serves library and hosts, and so that none is ever lost for
// want of memory.
#include "shr/exception.h"

#include <array>
#include <atomic>
#include <new>
#include <utility>

namespace shr {

namespace detail {

/// The texts of an exception and of its copies.
struct SharedTexts {
  std::atomic<int> uses{0};
  bool reserved = false;
  std::string module, source, message;
};

namespace {

/// Texts set aside while the library is loaded, for exceptions that are made when there is no memory left. Filling them
/// allocates nothing.
class Reserve {
 public:
  Reserve() noexcept {
    try {
      for (SharedTexts& texts : m_texts) {
        texts.reserved = true;
        texts.module.reserve(kName);
        texts.source.reserve(kName);
        texts.message.reserve(kMessage);
      }
      m_filled = true;
    } catch (const std::bad_alloc&) {  // loaded without memory: exceptions have no texts then
    }
  }

  /// Texts that nobody uses, their use counted; null when there are none.
  SharedTexts* Take(const char* module, const char* source, const char* message) noexcept {
    if (!m_filled) return nullptr;
    for (SharedTexts& texts : m_texts) {
      int unused = 0;
      if (!texts.uses.compare_exchange_strong(unused, 1, std::memory_order_acquire)) continue;
      Fill(texts.module, module);
      Fill(texts.source, source);
      Fill(texts.message, message);
      return &texts;
    }
    return nullptr;
  }

 private:
  static constexpr std::size_t kTexts = 16;  // exceptions at one time
  static constexpr std::size_t kName = 63;   // characters of module and source
  static constexpr std::size_t kMessage = 255;

  static void Fill(std::string& text, const char* from) noexcept {
    text.clear();
    for (; *from != '\0' && text.size() < text.capacity(); ++from) text.push_back(*from);
  }

  bool m_filled = false;
  std::array<SharedTexts, kTexts> m_texts;
};

Reserve g_reserve;
const std::string g_empty;

SharedTexts* MakeTexts(const char* module, const char* source, const char* message) noexcept {
  SharedTexts* texts = nullptr;
  try {
    texts = new SharedTexts;
    texts->uses = 1;
    texts->module = module;
    texts->source = source;
    texts->message = message;
    return texts;
  } catch (const std::bad_alloc&) {
    delete texts;
    return g_reserve.Take(module, source, message);
  }
}

SharedTexts* Share(SharedTexts* texts) noexcept {
  if (texts != nullptr) texts->uses.fetch_add(1, std::memory_order_relaxed);
  return texts;
}

void Release(SharedTexts* texts) noexcept {
  if (texts == nullptr) return;
  const bool onHeap = !texts->reserved;  // once given back, reserved texts may be another's
  if (texts->uses.fetch_sub(1, std::memory_order_acq_rel) == 1 && onHeap) delete texts;
}

const char* OrEmpty(const char* text) noexcept {
  return text != nullptr ? text : "";
}

}  // namespace

}  // namespace detail

using namespace detail;

Exception::Exception() noexcept : m_messageId(0), m_line(0), m_texts(nullptr) {}

Exception::Exception(int messageId, int line, const char* module, const char* source, const char* message) noexcept
    : m_messageId(messageId), m_line(line), m_texts(MakeTexts(OrEmpty(module), OrEmpty(source), OrEmpty(message))) {}

Exception::Exception(const Exception& other) noexcept
    : std::exception(other), m_messageId(other.m_messageId), m_line(other.m_line), m_texts(Share(other.m_texts)) {}

Exception& Exception::operator=(const Exception& other) noexcept {
  Exception copy(other);
  std::swap(m_messageId, copy.m_messageId);
  std::swap(m_line, copy.m_line);
  std::swap(m_texts, copy.m_texts);
  return *this;
}

Exception::~Exception() {
  Release(m_texts);
}

const std::string& Exception::Module() const noexcept {
  return m_texts != nullptr ? m_texts->module : g_empty;
}

const std::string& Exception::Source() const noexcept {
  return m_texts != nullptr ? m_texts->source : g_empty;
}

const std::string& Exception::Message() const noexcept {
  return m_texts != nullptr ? m_texts->message : g_empty;
}

const char* Exception::what() const noexcept {
  return Message().c_str();
}

}  // namespace shr
