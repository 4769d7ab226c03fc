// Captions, in the user's language, of the buttons that the layer itself adds to windows. Any
// thread.
#pragma once

#include <windows.h>

#include <string>

namespace platform {

// Identifier of the Apply button of a property sheet.
inline constexpr int kApplyButton = 0x3021;
// Identifiers of the wizard buttons that turn the pages, and of the one that finishes the wizard.
inline constexpr int kBackButton = 0x3023;
inline constexpr int kNextButton = 0x3024;
inline constexpr int kFinishButton = 0x3025;

// The caption of IDOK to IDNO and the identifiers above, "&" of the mnemonic included: in Swedish
// for users of Swedish, else in English. Empty for any other identifier.
std::wstring ButtonCaption(int id);

}  // namespace platform
