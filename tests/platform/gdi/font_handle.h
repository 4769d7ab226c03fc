// A font for the time of a test.
#pragma once

#include <windows.h>

#include <algorithm>
#include <string_view>

class FontHandle {
 public:
  FontHandle(std::wstring_view face, LONG height, LONG weight = FW_NORMAL) {
    LOGFONTW font{};
    font.lfHeight = height;
    font.lfWeight = weight;
    std::ranges::copy(face, font.lfFaceName);
    font_ = ::CreateFontIndirectW(&font);
  }
  ~FontHandle() { ::DeleteObject(font_); }
  FontHandle(const FontHandle&) = delete;
  FontHandle& operator=(const FontHandle&) = delete;

  HFONT Get() const { return font_; }

 private:
  HFONT font_;
};

// The extent of a text in that font.
inline SIZE ExtentOf(HDC context, HFONT font, std::wstring_view text) {
  const HGDIOBJ before = ::SelectObject(context, font);
  SIZE size{};
  ::GetTextExtentPoint32W(context, text.data(), static_cast<int>(text.size()), &size);
  ::SelectObject(context, before);
  return size;
}
