#include "platform/shell/help_file.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "platform/kernel/encoding.h"

namespace platform {
namespace {

constexpr std::wstring_view kSettingsPath = L"/#SYSTEM";
// The settings follow the version: code and length of 16 bits each, then the value.
constexpr std::size_t kVersionSize = 4;
constexpr std::size_t kHeaderSize = 4;
constexpr unsigned kContentsCode = 0;
constexpr unsigned kDefaultTopicCode = 2;
constexpr unsigned kTitleCode = 3;

constexpr wchar_t kReplacement = 0xFFFD;
constexpr wchar_t kByteOrderMark = 0xFEFF;
// Characters 0x80 to 0x9F of the western code page.
constexpr std::wstring_view kWesternExtras =
    L"\u20AC\uFFFD\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\uFFFD\u017D"
    L"\uFFFD"
    L"\uFFFD\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\uFFFD\u017E"
    L"\u0178";

unsigned Number16(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]) | unsigned{static_cast<unsigned char>(bytes[at + 1])}
                                                     << 8;
}

wchar_t WesternLetter(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  const bool isExtra = code >= 0x80 && code < 0x80 + kWesternExtras.size();
  return isExtra ? kWesternExtras[code - 0x80u] : static_cast<wchar_t>(code);
}

std::wstring WesternText(std::string_view bytes) {
  std::wstring text(bytes.size(), L'\0');
  std::ranges::transform(bytes, text.begin(), WesternLetter);
  return text;
}

// The value up to its terminator.
std::wstring SettingText(std::string_view value) {
  return HelpTextOf(value.substr(0, value.find('\0')));
}

std::wstring* SettingOf(HelpSettings& settings, unsigned code) {
  switch (code) {
    case kContentsCode:
      return &settings.contents;
    case kDefaultTopicCode:
      return &settings.defaultTopic;
    case kTitleCode:
      return &settings.title;
    default:
      return nullptr;
  }
}

}  // namespace

void HelpFile::Add(std::wstring path, std::string bytes) {
  std::wstring key = LowerName(path);
  entries_.try_emplace(std::move(key), Entry{std::move(path), std::move(bytes)});
}

const std::string* HelpFile::Find(std::wstring_view path) const {
  const auto found = entries_.find(LowerName(path));
  return found != entries_.end() ? &found->second.bytes : nullptr;
}

std::vector<std::wstring> HelpFile::Topics() const {
  std::vector<std::wstring> paths;
  for (const auto& [key, entry] : entries_) {
    if (key.ends_with(L".htm") || key.ends_with(L".html")) paths.push_back(entry.path);
  }
  return paths;
}

HelpSettings SettingsOf(const HelpFile& file) {
  HelpSettings settings;
  const std::string* found = file.Find(kSettingsPath);
  std::string_view left = found != nullptr ? *found : std::string_view();
  left.remove_prefix(std::min(kVersionSize, left.size()));
  while (left.size() >= kHeaderSize) {
    const std::string_view value = left.substr(kHeaderSize, Number16(left, 2));
    std::wstring* setting = SettingOf(settings, Number16(left, 0));
    // The compiler fills the file with zeros, which look like an empty first setting.
    if (setting != nullptr && setting->empty()) *setting = SettingText(value);
    left.remove_prefix(kHeaderSize + value.size());
  }
  return settings;
}

std::wstring HelpTextOf(std::string_view bytes) {
  std::wstring text = Wide(bytes);
  if (text.find(kReplacement) != std::wstring::npos) return WesternText(bytes);
  if (text.starts_with(kByteOrderMark)) text.erase(0, 1);
  return text;
}

}  // namespace platform
