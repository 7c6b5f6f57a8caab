// Call - what the functions that the module exports have in common: how they fail, and where they put results that do
// not fit into a number. Everything runs on one thread.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <emscripten.h>
#include <orvex/projection.h>
#include <shr/exception.h>

#include "Failure.h"

namespace orvex::web {

/// What the last call that failed has to say.
struct Error {
  int messageId = 0;  ///< 0: none of the library's messages
  std::string text;
};
Error& LastError();

/// Shapes by their points one after the other; shape i starts at point starts[i].
struct Paths {
  std::vector<PROJPOINT> points;
  std::vector<std::int32_t> starts{0};

  void Clear() {
    points.clear();
    starts.assign(1, 0);
  }
  /// Ends the shape that the points behind the last one make, if there are any.
  void Finish() {
    const auto end = static_cast<std::int32_t>(points.size());
    if (end > starts.back()) starts.push_back(end);
  }
};
/// Holds the result of a call until the next one.
Paths& Result();
/// The same for texts.
std::string& ResultText();

/// Runs an operation; `failed` when it throws.
template <class Value, class Operation>
Value Guarded(Value failed, Operation operation) {
  try {
    return operation();
  } catch (const shr::Exception& e) {
    LastError() = {e.MessageId(), e.what()};
  } catch (const std::exception& e) {
    LastError() = {0, e.what()};
  }
  return failed;
}

/// Statuses of the functions that answer nothing else.
enum Status : int { kDone = 0, kFailed = 1 };

/// A text as a result of a call.
inline const char* Answer(std::string text) {
  return (ResultText() = std::move(text)).c_str();
}

/// Marks what cannot be computed as JavaScript does: no numbers in both coordinates.
void MarkUnplottable(PROJPOINT* points, int count);

}  // namespace orvex::web

#define ORVEX_WEB extern "C" EMSCRIPTEN_KEEPALIVE
