// The role that the command line gives to the process.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillgate {

enum class CommandWord { kRunService, kInstall, kUninstall, kSetupWizard, kUnknown };

// The words of the process's command line; the first one names the program.
std::vector<std::wstring> CommandLineWords();

// By the first argument alone. "-" and "/" separate and are skipped; without anything else the
// process is the service. The case of ASCII letters does not matter.
CommandWord CommandOf(const std::vector<std::wstring>& words);

// What stands before the last backslash; without one, everything.
std::wstring FolderOf(std::wstring_view path);

}  // namespace quillgate
