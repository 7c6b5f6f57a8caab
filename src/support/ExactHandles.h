// ExactHandles - which handles compute exactly. A handle is a block of its record's size and nothing else, and every
// bit of the record may be the host's, so that the choice is kept beside it.
#pragma once

namespace orvex::detail {

/// Whether the handle computes exactly. Where no handle of the process does, one load.
bool IsExact(const void* handle) noexcept;

/// False when there is no memory to remember the choice in.
bool SetExact(const void* handle, bool exact) noexcept;

/// For a new handle: hosts may have freed one at its address by themselves.
inline void ForgetChoice(const void* handle) noexcept {
  if (IsExact(handle)) SetExact(handle, false);
}

/// A copy computes like the handle that it was made from; throws 20201 in the name of a source when there is no memory
/// to remember it in.
void KeepChoice(const void* original, const void* copy, const char* sourceFile, int line);

/// Frees a handle and the memory of its choice. Null is ignored.
void FreeHandle(void* handle) noexcept;

}  // namespace orvex::detail
