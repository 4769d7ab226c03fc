// Validates the text and length arguments of drawing functions. Any thread.
#pragma once

#include <windows.h>

#include <optional>
#include <string_view>

namespace platform {

// A length of -1 means that the text ends with a null character. Returns null, with
// ERROR_INVALID_PARAMETER as the last error, for a smaller length and for a missing text.
inline std::optional<std::wstring_view> TextArgument(LPCWSTR text, int length) {
  if (length < -1 || (text == nullptr && length != 0)) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return std::nullopt;
  }
  if (text == nullptr) return std::wstring_view();
  return length < 0 ? std::wstring_view(text)
                    : std::wstring_view(text, static_cast<std::size_t>(length));
}

}  // namespace platform
