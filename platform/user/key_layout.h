// What keys type. A keyboard layout shows itself by what the user types with it; of keys that have
// not been pressed yet it is taken for a US one. Used by one thread.
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

  // Both together stand for the third level of a layout.
  bool MakesControlCharacters() const { return control && !alt; }
  auto operator<=>(const ShiftKeys&) const = default;
};

class KeyLayout {
 public:
  // The key has typed that, which may be nothing at all.
  void Learn(UINT virtualKey, const ShiftKeys& with, const std::wstring& text);

  // Empty: nothing.
  std::wstring TextOf(UINT virtualKey, const ShiftKeys& with) const;

 private:
  std::map<std::tuple<UINT, ShiftKeys>, std::wstring> learnt_;
};

}  // namespace platform
