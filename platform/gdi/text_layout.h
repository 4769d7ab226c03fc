// How DrawText breaks a text into lines and ends those that are too long in dots. Used on the
// window thread, where fonts are measured.
#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

#include "platform/gdi/graphics_backend.h"

namespace platform {

// A part of the text that is laid out.
struct TextLine {
  std::wstring_view text;
  int width = 0;  // with the dots
  bool endsInDots = false;
};

class TextLayout {
 public:
  // The room is in pixels; the format is made of DT_SINGLELINE, DT_WORDBREAK, DT_EDITCONTROL,
  // DT_END_ELLIPSIS, DT_NOCLIP and DT_CALCRECT, of which the last two make the height unlimited.
  TextLayout(GraphicsBackend& graphics, const LOGFONTW& font, SIZE room, UINT format);

  int LineHeight() const { return metrics_.height; }
  // One at least. Those that would lie below the room are left out.
  std::vector<TextLine> LinesOf(std::wstring_view text) const;

 private:
  struct Piece {
    std::wstring_view line;
    std::size_t consumed = 0;  // with what separates it from the next one
  };

  bool Has(UINT flag) const { return (format_ & flag) != 0; }
  bool IsLimited() const { return !Has(DT_NOCLIP | DT_CALCRECT); }
  int WidthOf(std::wstring_view text) const;
  std::size_t CountWithin(std::wstring_view text, int width) const;
  bool HasRoomFor(std::size_t line) const;
  // Whether dots must tell of what comes after that line.
  bool IsLastWhole(std::size_t line) const;
  Piece FirstOf(std::wstring_view text) const;
  Piece FirstWords(std::wstring_view paragraph) const;
  TextLine Plain(std::wstring_view text) const { return {text, WidthOf(text), false}; }
  TextLine WithDots(std::wstring_view text) const;
  // The text's last line, in dots when it is too long.
  TextLine Last(std::wstring_view text) const;
  // What the last line has room for, in dots when that is not all.
  TextLine Remainder(std::wstring_view text) const;

  GraphicsBackend& graphics_;
  const LOGFONTW& font_;
  const SIZE room_;
  const UINT format_;
  const TextMetrics metrics_;
};

}  // namespace platform
