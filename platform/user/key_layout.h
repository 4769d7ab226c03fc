// The characters that keys produce. A keyboard layout is learnt from what the user types; keys that
// have not been pressed yet are taken to be those of a US keyboard. For one thread.
#pragma once

#include <windows.h>

#include <compare>
#include <map>
#include <string>
#include <tuple>

namespace platform {

struct ShiftKeys {
  bool shift = false;
  bool control = false;
  bool alt = false;

  // Ctrl and Alt together are AltGr, which selects a layout's third level.
  bool MakesControlCharacters() const { return control && !alt; }
  auto operator<=>(const ShiftKeys&) const = default;
};

class KeyLayout {
 public:
  // Records the text that the key produced, which may be empty.
  void Learn(UINT virtualKey, const ShiftKeys& with, const std::wstring& text);

  // Empty when the key produces no text.
  std::wstring TextOf(UINT virtualKey, const ShiftKeys& with) const;

 private:
  std::map<std::tuple<UINT, ShiftKeys>, std::wstring> learnt_;
};

}  // namespace platform
