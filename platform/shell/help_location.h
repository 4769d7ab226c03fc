// Where something is in compiled help: what programs pass as "file::/topic>window", and what links
// in topics refer to. Values; any thread.
#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

struct HelpTarget {
  std::wstring path;    // "/html/index.html"; empty: the default topic
  std::wstring anchor;  // empty: the top of the topic

  bool operator==(const HelpTarget&) const = default;
};

struct HelpLocation {
  std::wstring file;
  HelpTarget target;

  bool operator==(const HelpLocation&) const = default;
};

// Nothing when no file is named. The window's name is dropped: there is one window.
std::optional<HelpLocation> ParseHelpLocation(std::wstring_view text);

// What an address in the topic of that path refers to. Nothing for an address outside of the file:
// another file, a web page, a mail address.
std::optional<HelpTarget> ResolveHelpAddress(std::wstring_view path, std::wstring_view address);

// Which file a program means: a name without a folder, or with a relative one, is beside the
// executable. A file of that name in a folder named by the code of the language ("sv") comes first.
std::filesystem::path FindHelpFile(std::wstring_view file, LANGID language);

}  // namespace platform
