#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "platform/kernel/api_result.h"
#include "platform/kernel/locale_source.h"
#include "platform/kernel/log.h"
#include "platform/kernel/message_format.h"
#include "platform/kernel/message_table.h"
#include "platform/kernel/resources.h"

namespace {

constexpr std::uint16_t kMessageTable = 11;
constexpr std::uint16_t kMessageTableName = 1;

bool IsNeutral(LANGID language) {
  return PRIMARYLANGID(language) == LANG_NEUTRAL;
}

// The languages in which a message is looked up, in order. A language that is not neutral is the
// only one; else the user's, then English, then all others.
std::vector<LANGID> LanguagesToTry(LANGID wanted) {
  if (!IsNeutral(wanted)) return {wanted};
  const LANGID user = platform::CurrentLanguage();
  std::vector<LANGID> languages{user, MAKELANGID(PRIMARYLANGID(user), SUBLANG_NEUTRAL),
                                MAKELANGID(PRIMARYLANGID(user), SUBLANG_DEFAULT),
                                MAKELANGID(LANG_ENGLISH, SUBLANG_DEFAULT)};
  const std::vector<LANGID> all = platform::ResourceLanguages(kMessageTable, kMessageTableName);
  languages.insert(languages.end(), all.begin(), all.end());
  return languages;
}

DWORD FindMessageText(DWORD messageId, LANGID language, std::wstring& text) {
  DWORD error = ERROR_RESOURCE_LANG_NOT_FOUND;
  for (const LANGID each : LanguagesToTry(language)) {
    const auto table = platform::FindResourceBytes(kMessageTable, kMessageTableName, each);
    if (table.empty()) continue;
    std::optional<std::wstring> found = platform::FindMessage(table, messageId);
    if (found) {
      text = std::move(*found);
      return NO_ERROR;
    }
    error = ERROR_MR_MID_NOT_FOUND;
  }
  return error;
}

DWORD CheckArguments(DWORD flags, LPCVOID source, LPWSTR buffer) {
  if ((flags & ~FORMAT_MESSAGE_ALLOCATE_BUFFER) != FORMAT_MESSAGE_FROM_HMODULE) {
    platform::LogLine("FormatMessageW: unsupported flags");
    return ERROR_INVALID_PARAMETER;
  }
  if (buffer == nullptr) return ERROR_INVALID_PARAMETER;
  // Only the executable carries resources.
  const bool own = source == nullptr || source == ::GetModuleHandleW(nullptr);
  if (!own || platform::ResourceLanguages(kMessageTable, kMessageTableName).empty()) {
    return ERROR_RESOURCE_TYPE_NOT_FOUND;
  }
  return NO_ERROR;
}

DWORD StoreText(const std::wstring& text, DWORD flags, LPWSTR buffer, DWORD size) {
  LPWSTR target = buffer;
  if ((flags & FORMAT_MESSAGE_ALLOCATE_BUFFER) != 0) {
    const std::size_t characters = std::max<std::size_t>(text.size() + 1, size);
    target = static_cast<LPWSTR>(std::malloc(characters * sizeof(wchar_t)));
    if (target == nullptr) return ERROR_NOT_ENOUGH_MEMORY;
    // With this flag `buffer` is the address of the caller's pointer.
    *reinterpret_cast<LPWSTR*>(buffer) = target;
  } else if (size <= text.size()) {
    return ERROR_INSUFFICIENT_BUFFER;
  }
  std::ranges::copy(text, target);
  target[text.size()] = L'\0';
  return NO_ERROR;
}

DWORD MakeMessage(DWORD messageId, DWORD languageId, va_list* arguments, std::wstring& formatted) {
  std::wstring text;
  const DWORD error = FindMessageText(messageId, static_cast<LANGID>(languageId), text);
  return error != NO_ERROR ? error : platform::FormatMessageText(text, arguments, formatted);
}

}  // namespace

extern "C" DWORD WINAPI FormatMessageW(DWORD flags, LPCVOID source, DWORD messageId,
                                       DWORD languageId, LPWSTR buffer, DWORD size,
                                       va_list* arguments) try {
  std::wstring text;
  DWORD error = CheckArguments(flags, source, buffer);
  if (error == NO_ERROR && (flags & FORMAT_MESSAGE_ALLOCATE_BUFFER) != 0) {
    *reinterpret_cast<LPWSTR*>(buffer) = nullptr;
  }
  if (error == NO_ERROR) error = MakeMessage(messageId, languageId, arguments, text);
  // The result of an empty text is 0, as for a failure, so the caller gets no buffer to free.
  if (error == NO_ERROR && !text.empty()) error = StoreText(text, flags, buffer, size);
  if (error == NO_ERROR) return static_cast<DWORD>(text.size());
  ::SetLastError(error);
  return 0;
} catch (...) {
  return platform::FailedCall(DWORD{0});
}
