// The exception that Orvex throws.
#pragma once

#include <exception>
#include <string>
#include <utility>

#include <orvex/export.h>

namespace shr {

/// Thrown by value for bad parameters and for impossible internal states; nothing else leaves the library as an
/// exception.
class ORVEX_API Exception : public std::exception {
 public:
  Exception() = default;
  Exception(int messageId, int line, std::string module, std::string source, std::string message)
      : m_messageId(messageId),
        m_line(line),
        m_module(std::move(module)),
        m_source(std::move(source)),
        m_message(std::move(message)) {}
  Exception(const Exception&) = default;
  Exception& operator=(const Exception&) = default;
  ~Exception() override;

  /// Number of the message: 20200 to 20281; see docs/errors.md for each id, its cause and what to do.
  int MessageId() const { return m_messageId; }
  /// Position of the failed check inside Source().
  int Line() const { return m_line; }
  /// Always "Orvex".
  const std::string& Module() const { return m_module; }
  /// Name of the source module that failed, for example "Orvex" or "PrjTMerc".
  const std::string& Source() const { return m_source; }
  /// The message text.
  const std::string& Message() const { return m_message; }
  /// The message text.
  const char* what() const noexcept override;

 private:
  int m_messageId = 0;
  int m_line = 0;
  std::string m_module;
  std::string m_source;
  std::string m_message;
};

}  // namespace shr
