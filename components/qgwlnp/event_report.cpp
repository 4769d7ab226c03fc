#include "event_report.h"

#include <windows.h>

namespace quillgate::notifier {
namespace {

constexpr wchar_t kSource[] = L"qgwlnp";

}  // namespace

void LogEvent(const std::wstring& text) noexcept {
  const HANDLE source = ::RegisterEventSourceW(nullptr, kSource);
  if (source == nullptr) return;
  LPCWSTR strings[] = {text.c_str()};
  ::ReportEventW(source, EVENTLOG_WARNING_TYPE, 0, 0, nullptr, 1, 0, strings, nullptr);
  ::DeregisterEventSource(source);
}

std::wstring Widen(std::string_view narrow) {
  const int bytes = static_cast<int>(narrow.size());
  const int length = ::MultiByteToWideChar(CP_UTF8, 0, narrow.data(), bytes, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, narrow.data(), bytes, wide.data(), length);
  return wide;
}

std::string Narrow(std::wstring_view wide) {
  const int characters = static_cast<int>(wide.size());
  const int bytes =
      ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), characters, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(bytes), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), characters, narrow.data(), bytes, nullptr,
                        nullptr);
  return narrow;
}

}  // namespace quillgate::notifier
