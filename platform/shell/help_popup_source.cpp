#include "platform/shell/help_popup_source.h"

#include <charconv>
#include <sstream>

#include "platform/kernel/encoding.h"

namespace platform {
namespace {

constexpr std::wstring_view kTopic = L".topic";
constexpr std::wstring_view kSpaces = L" \t\r";

std::wstring_view Trimmed(std::wstring_view line) {
  const std::size_t begin = line.find_first_not_of(kSpaces);
  if (begin == std::wstring_view::npos) return {};
  return line.substr(begin, line.find_last_not_of(kSpaces) + 1 - begin);
}

bool Names(std::wstring_view line, std::uint32_t number) {
  const std::string digits = Utf8(Trimmed(line.substr(kTopic.size())));
  std::uint32_t named = 0;
  const char* end = digits.data() + digits.size();
  const auto [rest, error] = std::from_chars(digits.data(), end, named);
  return error == std::errc() && rest == end && named == number;
}

void AppendLine(std::wstring& text, std::wstring_view line) {
  const bool beginsParagraph = text.empty() || text.ends_with(L'\n');
  if (line.empty()) {
    if (!beginsParagraph) text += L'\n';
    return;
  }
  if (!beginsParagraph) text += L' ';
  text += line;
}

}  // namespace

std::optional<std::wstring> FindPopupText(std::wstring_view source, std::uint32_t number) {
  std::wistringstream lines{std::wstring(source)};
  std::wstring text;
  bool isWanted = false;
  for (std::wstring line; std::getline(lines, line);) {
    const std::wstring_view trimmed = Trimmed(line);
    if (trimmed.starts_with(kTopic)) {
      if (isWanted) break;
      isWanted = Names(trimmed, number);
    } else if (isWanted) {
      AppendLine(text, trimmed);
    }
  }
  if (text.ends_with(L'\n')) text.pop_back();
  return text.empty() ? std::nullopt : std::optional(std::move(text));
}

}  // namespace platform
