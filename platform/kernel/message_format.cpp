#include "platform/kernel/message_format.h"

#include <winerror.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

enum class InsertKind { kUnused, kString, kUnsigned, kSigned };

struct Insert {
  std::size_t number = 0;
  InsertKind kind = InsertKind::kString;
};

bool IsDigit(wchar_t letter) {
  return letter >= L'0' && letter <= L'9';
}

std::optional<InsertKind> KindOfFormat(std::wstring_view format) {
  if (format == L"u" || format == L"lu") return InsertKind::kUnsigned;
  if (format == L"d" || format == L"ld") return InsertKind::kSigned;
  if (format == L"s" || format == L"ls") return InsertKind::kString;
  return std::nullopt;
}

// Takes "1" or "1!u!" from the start of `text`, of which the first letter is a digit.
std::optional<Insert> TakeInsert(std::wstring_view& text) {
  Insert insert;
  for (int digits = 0; digits < 2 && !text.empty() && IsDigit(text.front()); ++digits) {
    insert.number = insert.number * 10 + static_cast<std::size_t>(text.front() - L'0');
    text.remove_prefix(1);
  }
  if (!text.starts_with(L'!')) return insert;
  const std::size_t end = text.find(L'!', 1);
  if (end == std::wstring_view::npos) return std::nullopt;
  const std::optional<InsertKind> kind = KindOfFormat(text.substr(1, end - 1));
  if (!kind) {
    LogLine("FormatMessageW: unsupported insert format " + Utf8(text.substr(0, end + 1)));
    return std::nullopt;
  }
  insert.kind = *kind;
  text.remove_prefix(end + 1);
  return insert;
}

// The text of an escape such as "%n"; empty when the letter stands for itself.
std::wstring_view Escaped(wchar_t letter) {
  switch (letter) {
    case L'n':
      return L"\r\n";
    case L'r':
      return L"\r";
    case L't':
      return L"\t";
    default:
      return {};
  }
}

// Passes through a text once and calls the handlers for plain pieces and inserts, in order. The
// first pass collects the kinds of the arguments, the second one formats the text. False when an
// insert is malformed or `onInsert` returns false.
template <class OnText, class OnInsert>
bool WalkMessage(std::wstring_view text, OnText onText, OnInsert onInsert) {
  while (!text.empty()) {
    const wchar_t letter = text.front();
    text.remove_prefix(1);
    if (letter == L'\r' || letter == L'\n') {
      if (letter == L'\r' && text.starts_with(L'\n')) text.remove_prefix(1);
      onText(L"\r\n");
    } else if (letter != L'%' || text.empty()) {
      onText(std::wstring_view(&letter, 1));
    } else if (text.front() == L'0') {
      return true;
    } else if (IsDigit(text.front())) {
      const std::optional<Insert> insert = TakeInsert(text);
      if (!insert || !onInsert(*insert)) return false;
    } else {
      const std::wstring_view escaped = Escaped(text.front());
      onText(escaped.empty() ? text.substr(0, 1) : escaped);
      text.remove_prefix(1);
    }
  }
  return true;
}

using Kinds = std::vector<InsertKind>;  // by number, from 1

std::optional<Kinds> KindsOfInserts(std::wstring_view text) {
  Kinds kinds;
  const auto note = [&kinds](const Insert& insert) {
    if (kinds.size() < insert.number) kinds.resize(insert.number, InsertKind::kUnused);
    InsertKind& kind = kinds[insert.number - 1];
    if (kind == InsertKind::kUnused) kind = insert.kind;
    return (kind == InsertKind::kString) == (insert.kind == InsertKind::kString);
  };
  if (!WalkMessage(
          text, [](std::wstring_view) {}, note))
    return std::nullopt;
  return kinds;
}

struct Argument {
  LPCWSTR string = nullptr;
  DWORD number = 0;
};

std::vector<Argument> FetchArguments(const Kinds& kinds, va_list* list) {
  std::vector<Argument> arguments(kinds.size());
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    if (kinds[i] == InsertKind::kString) {
      arguments[i].string = va_arg(*list, LPCWSTR);
    } else {
      arguments[i].number = va_arg(*list, DWORD);
    }
  }
  return arguments;
}

std::wstring InsertText(const Insert& insert, const Argument& argument) {
  switch (insert.kind) {
    case InsertKind::kUnsigned:
      return std::to_wstring(argument.number);
    case InsertKind::kSigned:
      return std::to_wstring(static_cast<std::int32_t>(argument.number));
    default:
      return argument.string == nullptr ? L"(null)" : argument.string;
  }
}

}  // namespace

DWORD FormatMessageText(std::wstring_view text, va_list* arguments, std::wstring& formatted) {
  const std::optional<Kinds> kinds = KindsOfInserts(text);
  if (!kinds || (!kinds->empty() && arguments == nullptr)) return ERROR_INVALID_PARAMETER;
  std::vector<Argument> values;
  if (!kinds->empty()) values = FetchArguments(*kinds, arguments);
  formatted.clear();
  WalkMessage(
      text, [&](std::wstring_view piece) { formatted += piece; },
      [&](const Insert& insert) {
        formatted += InsertText(insert, values[insert.number - 1]);
        return true;
      });
  return NO_ERROR;
}

}  // namespace platform
