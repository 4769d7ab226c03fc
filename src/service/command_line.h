// The role of the process, as its command line selects it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillgate {

enum class CommandWord { kRunService, kInstall, kUninstall, kSetupWizard, kUnknown };

// Returns the words of the command line of the process; the first one names the program.
std::vector<std::wstring> CommandLineWords();

// Only the first argument counts. Its first word is the command: "-" and "/" separate words, and
// leading ones are skipped. Without an argument or a word in it, the process runs the service.
// ASCII letters are compared without case.
CommandWord CommandOf(const std::vector<std::wstring>& words);

// Returns the part before the last backslash, the whole path when there is none.
std::wstring FolderOf(std::wstring_view path);

}  // namespace quillgate
