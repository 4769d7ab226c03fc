// The role that the first command-line word gives to the process.
#include "service/command_line.h"

#include <gtest/gtest.h>

namespace quillgate {
namespace {

TEST(CommandLine, TheFirstArgumentsFirstWordDecides) {
  const std::pair<std::vector<std::wstring>, CommandWord> cases[] = {
      {{}, CommandWord::kRunService},
      {{L""}, CommandWord::kRunService},
      {{L"-"}, CommandWord::kRunService},
      {{L"//"}, CommandWord::kRunService},
      {{L"-/-", L"Install"}, CommandWord::kRunService},
      {{L"Install"}, CommandWord::kInstall},
      {{L"-Install"}, CommandWord::kInstall},
      {{L"/install"}, CommandWord::kInstall},
      {{L"--INSTALL"}, CommandWord::kInstall},
      {{L"-install-now"}, CommandWord::kInstall},
      {{L"Install", L"extra"}, CommandWord::kInstall},
      {{L"/UNINSTALL"}, CommandWord::kUninstall},
      {{L"setupwizard"}, CommandWord::kSetupWizard},
      {{L"Setup"}, CommandWord::kUnknown},
      {{L"Installs"}, CommandWord::kUnknown},
      {{L" Install"}, CommandWord::kUnknown},
      {{L"\u0130nstall"}, CommandWord::kUnknown},  // a dotted capital I
  };
  for (const auto& [arguments, expected] : cases) {
    std::vector<std::wstring> words = {L"qgserv"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    EXPECT_EQ(CommandOf(words), expected) << testing::PrintToString(arguments);
  }
  EXPECT_EQ(CommandOf({}), CommandWord::kRunService);
}

TEST(CommandLine, TheFolderEndsBeforeTheLastBackslash) {
  EXPECT_EQ(FolderOf(L"\\opt\\gate\\qgserv"), L"\\opt\\gate");
  EXPECT_EQ(FolderOf(L"qgserv"), L"qgserv");
}

}  // namespace
}  // namespace quillgate
