// Where the buttons of the setup wizard lead.
#include "wizard/wizard_path.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <vector>

#include "resources/resource.h"

namespace quillgate {
namespace {

std::vector<unsigned> Walk(unsigned page, const WizardChoices& choices, decltype(NextPage)& turn) {
  std::vector<unsigned> pages = {page};
  while (const auto next = turn(pages.back(), choices))
    pages.push_back(*next);
  return pages;
}

TEST(WizardPath, EveryPathGoesThroughItsPagesAndBackTheSameWay) {
  const struct {
    const char* what;
    WizardChoices choices;
    std::vector<unsigned> pages;
  } paths[] = {
      {"simple", {true, LogonSystem::kNone}, {146, 147, 153, 155, 149}},
      {"simple after another choice", {true, LogonSystem::kWindows}, {146, 147, 153, 155, 149}},
      {"none", {false, LogonSystem::kNone}, {146, 147, 156, 153, 155, 149}},
      {"Quillgate", {false, LogonSystem::kQuillgate}, {146, 147, 156, 157, 158, 149}},
      {"Windows", {false, LogonSystem::kWindows}, {146, 147, 156, 158, 149}},
  };
  for (auto [what, choices, pages] : paths) {
    EXPECT_EQ(Walk(IDD_SETUP_WELCOME, choices, NextPage), pages) << what;
    std::ranges::reverse(pages);
    EXPECT_EQ(Walk(IDD_SETUP_COMPLETION, choices, PreviousPage), pages) << what;
  }
}

}  // namespace
}  // namespace quillgate
