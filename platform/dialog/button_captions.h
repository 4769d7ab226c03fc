// Captions of the buttons that the system itself puts into windows, in the user's language. Any
// thread.
#pragma once

#include <windows.h>

#include <string>

namespace platform {

// The number that the button "Apply" of a sheet has.
inline constexpr int kApplyButton = 0x3021;
// Those of the buttons that turn the pages of a wizard, and of the one that ends it.
inline constexpr int kBackButton = 0x3023;
inline constexpr int kNextButton = 0x3024;
inline constexpr int kFinishButton = 0x3025;

// Of IDOK to IDNO and the numbers above: in Swedish for users of Swedish, else in English. With the
// "&" of the mnemonic. Empty for any other number.
std::wstring ButtonCaption(int id);

}  // namespace platform
