/// \file
/// The exception that Orvex throws.
#pragma once

#include <exception>
#include <string>

#include <orvex/export.h>

/// What Orvex shares with its hosts: the exception and image registration.
namespace shr {

/// \addtogroup exception
/// \{

namespace detail {
struct SharedTexts;
}

/// Thrown by value for bad parameters and for impossible internal states; nothing else leaves the library as an
/// exception. Making and copying one never throws: when there is no memory left, its texts come from a reserve.
class ORVEX_API Exception : public std::exception {
 public:
  Exception() noexcept;
  /// The texts are copied; null counts as empty.
  Exception(int messageId, int line, const char* module, const char* source, const char* message) noexcept;
  Exception(const Exception& other) noexcept;             ///< shares the texts
  Exception& operator=(const Exception& other) noexcept;  ///< shares the texts
  ~Exception() override;

  /// Number of the message: 20200 to 20281; see docs/errors.md for each id, its cause and what to do.
  int MessageId() const noexcept { return m_messageId; }
  /// Position of the failed check inside Source().
  int Line() const noexcept { return m_line; }
  /// Always "Orvex".
  const std::string& Module() const noexcept;
  /// Name of the source module that failed, for example "Orvex" or "PrjTMerc".
  const std::string& Source() const noexcept;
  /// The message text.
  const std::string& Message() const noexcept;
  /// The message text.
  const char* what() const noexcept override;

 private:
  int m_messageId;
  int m_line;
  detail::SharedTexts* m_texts;  // shared by the copies; null: all empty
};

/// \}

}  // namespace shr
