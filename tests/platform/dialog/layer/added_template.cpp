// What programs of the layer have from elsewhere: a desktop, and the resources that they are made
// with.
#include <gtest/gtest.h>

#include <cstdlib>
#include <deque>

#include "platform/dialog/template_bytes.h"
#include "platform/kernel/resources.h"

namespace {

class Offscreen : public ::testing::Environment {
 public:
  void SetUp() override { ::setenv("QT_QPA_PLATFORM", "offscreen", 0); }
};
[[maybe_unused]] const auto* const offscreen = ::testing::AddGlobalTestEnvironment(new Offscreen);

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
