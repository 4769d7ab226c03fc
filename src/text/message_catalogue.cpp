#include "text/message_catalogue.h"

#include <cstdarg>
#include <cwctype>
#include <exception>

#include "handles/handle.h"

namespace quillgate {
namespace {

// The primary language with its default sublanguage.
LANGID WithDefaultSublanguage(DWORD id) {
  return static_cast<LANGID>(id | MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT));
}

// Some languages write their own name in lower case; a list entry starts with a capital.
std::wstring Capitalised(std::wstring name) {
  bool first = true;
  for (wchar_t& each : name) {
    each = static_cast<wchar_t>(first ? std::towupper(each) : std::towlower(each));
    first = false;
  }
  return name;
}

std::wstring NativeLanguageName(LANGID language) {
  const LCID locale = WithDefaultSublanguage(language);
  const int size = ::GetLocaleInfoW(locale, LOCALE_SNATIVELANGNAME, nullptr, 0);
  if (size <= 0) return {};
  std::wstring name(static_cast<std::size_t>(size), L'\0');
  if (::GetLocaleInfoW(locale, LOCALE_SNATIVELANGNAME, name.data(), size) == 0) return {};
  name.resize(name.size() - 1);  // the terminator
  return Capitalised(std::move(name));
}

BOOL CALLBACK AppendLanguage(HMODULE, LPCWSTR, LPCWSTR, WORD language,
                             LONG_PTR parameter) noexcept {
  try {
    reinterpret_cast<LanguageList*>(parameter)->push_back({NativeLanguageName(language), language});
  } catch (const std::exception&) {
    // The list lacks this language.
  }
  return TRUE;
}

}  // namespace

MessageCatalogue::MessageCatalogue()
    : languageId_(WithDefaultSublanguage(::GetSystemDefaultUILanguage())) {
  BuildLanguageList();
}

void MessageCatalogue::SetInterfaceLanguage(DWORD id) {
  const LANGID language = WithDefaultSublanguage(id);
  languageId_ = language;
  ::SetThreadUILanguage(PRIMARYLANGID(language) == LANG_NEUTRAL ? LANGID{0} : language);
}

std::wstring MessageCatalogue::GetMessageText(MessageId id, ...) const {
  LPWSTR text = nullptr;
  va_list inserts;
  va_start(inserts, id);
  const DWORD length =
      ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_HMODULE, nullptr, id,
                       languageId_, reinterpret_cast<LPWSTR>(&text), 0, &inserts);
  va_end(inserts);
  const LocalBlock buffer(text);
  return length == 0 ? std::wstring() : std::wstring(text, length);
}

void MessageCatalogue::BuildLanguageList() {
  ::EnumResourceLanguagesW(nullptr, RT_MESSAGETABLE, MAKEINTRESOURCEW(1), AppendLanguage,
                           reinterpret_cast<LONG_PTR>(&languages_));
}

}  // namespace quillgate
