// The text and length that drawing functions are given. Any thread.
#pragma once

#include <windows.h>

#include <optional>
#include <string_view>

namespace platform {

// A length of -1: up to the text's zero. Nothing, with ERROR_INVALID_PARAMETER as the last error,
// for a smaller one and when a text is missing.
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
