#include "platform/shell/help_location.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "platform/kernel/encoding.h"
#include "platform/kernel/locale_source.h"
#include "platform/kernel/path.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr std::wstring_view kHexDigits = L"0123456789abcdef";

// -1: it is no digit.
int HexValue(char digit) {
  const std::size_t value = kHexDigits.find(LowerName(std::wstring(1, digit)));
  return value != std::wstring_view::npos ? static_cast<int>(value) : -1;
}

// "%C3%A5" stands for the bytes of a character in UTF-8.
std::wstring DecodePercents(std::wstring_view text) {
  const std::string bytes = Utf8(text);
  std::string decoded;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const bool isEscape = bytes[i] == '%' && i + 2 < bytes.size() && HexValue(bytes[i + 1]) >= 0 &&
                          HexValue(bytes[i + 2]) >= 0;
    decoded += isEscape ? static_cast<char>(HexValue(bytes[i + 1]) * 16 + HexValue(bytes[i + 2]))
                        : bytes[i];
    if (isEscape) i += 2;
  }
  return Wide(decoded);
}

// Whether it begins with a scheme ("http:"), another machine's name or the name of another file.
bool IsOutside(std::wstring_view address) {
  const std::size_t end = address.find_first_of(L":/?#");
  const bool hasScheme = end != std::wstring_view::npos && end > 0 && address[end] == L':';
  return hasScheme || address.starts_with(L"//");
}

// Adds the names of the path to the folders, following "." and "..".
void Walk(std::vector<std::wstring>& names, std::wstring_view path) {
  while (!path.empty()) {
    const std::wstring_view name = path.substr(0, path.find(L'/'));
    path.remove_prefix(std::min(name.size() + 1, path.size()));
    if (name == L"..") {
      if (!names.empty()) names.pop_back();
    } else if (!name.empty() && name != L".") {
      names.emplace_back(name);
    }
  }
}

std::wstring Join(std::wstring_view folder, std::wstring_view path) {
  std::vector<std::wstring> names;
  if (!path.starts_with(L'/')) Walk(names, folder);
  Walk(names, path);
  std::wstring joined;
  for (const std::wstring& name : names)
    joined += L"/" + name;
  return joined;
}

fs::path ExecutableFolder() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return PosixPath(path.substr(0, length)).parent_path();
    path.resize(path.size() * 2);
  }
}

}  // namespace

std::optional<HelpLocation> ParseHelpLocation(std::wstring_view text) {
  text = text.substr(0, text.find(L'>'));
  const std::size_t separator = text.find(L"::");
  HelpLocation location;
  location.file = text.substr(0, separator);
  if (location.file.empty()) return std::nullopt;
  if (separator == std::wstring_view::npos) return location;
  const auto target = ResolveHelpAddress(L"/", text.substr(separator + 2));
  if (!target.has_value()) return std::nullopt;
  location.target = *target;
  return location;
}

std::optional<HelpTarget> ResolveHelpAddress(std::wstring_view path, std::wstring_view address) {
  std::wstring slashed(address);
  std::ranges::replace(slashed, L'\\', L'/');
  if (IsOutside(slashed)) return std::nullopt;
  const std::wstring_view all = slashed;
  const std::size_t mark = all.find(L'#');
  const std::wstring_view anchor =
      mark != std::wstring_view::npos ? all.substr(mark + 1) : std::wstring_view();
  std::wstring_view file = all.substr(0, mark);
  file = file.substr(0, file.find(L'?'));
  if (file.empty())
    return HelpTarget{std::wstring(path == L"/" ? L"" : path), DecodePercents(anchor)};
  const std::wstring_view folder = path.substr(0, path.find_last_of(L'/') + 1);
  return HelpTarget{Join(folder, DecodePercents(file)), DecodePercents(anchor)};
}

fs::path FindHelpFile(std::wstring_view file, LANGID language) {
  fs::path named = ExecutableFolder() / PosixPath(file);
  const std::string code = LanguageCode(language);
  if (code.empty()) return named;
  fs::path translated = named.parent_path() / code / named.filename();
  std::error_code error;
  return fs::is_regular_file(translated, error) ? translated : named;
}

}  // namespace platform
