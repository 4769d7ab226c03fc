// The account names of this machine.
#pragma once

#include <string>
#include <vector>

namespace quillgate {

// Appends them. False when they cannot be enumerated; names appended so far stay.
bool GetWindowsUserList(std::vector<std::wstring>& names);

}  // namespace quillgate
