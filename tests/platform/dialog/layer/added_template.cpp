// What programs of the layer have from elsewhere: a desktop, and the resources that they are made
// with.
#include <cstdlib>
#include <deque>

#include "platform/dialog/template_bytes.h"
#include "platform/kernel/resources.h"

namespace {

[[maybe_unused]] const int offscreen = ::setenv("QT_QPA_PLATFORM", "offscreen", 0);

}  // namespace

// Resources live as long as the process.
LPCWSTR AddTemplates(const std::vector<std::pair<LANGID, ResourceBytes>>& templates) {
  constexpr WORD kDialogType = 5;  // RT_DIALOG
  static auto& kept = *new std::deque<ResourceBytes>;
  static WORD last = 100;
  ++last;
  for (const auto& [language, bytes] : templates) {
    const platform::Resource resource = {kDialogType, last, language, kept.emplace_back(bytes)};
    platform::RegisterResources({&resource, 1});
  }
  return MAKEINTRESOURCEW(last);
}
