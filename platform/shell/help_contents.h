// The table of contents of compiled help: a site map, an HTML file of nested lists. A value; any
// thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/shell/help_location.h"

namespace platform {

struct HelpEntry {
  std::wstring title;
  std::optional<HelpTarget> target;  // nothing: a heading alone
  std::size_t level = 0;             // 0, or at most one more than that of the entry before

  bool operator==(const HelpEntry&) const = default;
};

// The entries in their order. Entries without a title are left out; addresses are relative to the
// site map of that path.
std::vector<HelpEntry> ParseSiteMap(std::wstring_view markup, std::wstring_view path);

}  // namespace platform
