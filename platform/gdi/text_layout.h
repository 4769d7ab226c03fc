// Breaks a text into lines for DrawText and ends lines that are too long with an ellipsis. Used on
// the window thread, where fonts are measured.
#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

#include "platform/gdi/graphics_backend.h"

namespace platform {

// One line of the text that is laid out.
struct TextLine {
  std::wstring_view text;
  int width = 0;  // with the ellipsis
  bool endsInDots = false;
};

class TextLayout {
 public:
  // The room is in pixels. The format is a combination of DT_SINGLELINE, DT_WORDBREAK,
  // DT_EDITCONTROL, DT_END_ELLIPSIS, DT_NOCLIP and DT_CALCRECT. DT_NOCLIP and DT_CALCRECT make the
  // height unlimited.
  TextLayout(GraphicsBackend& graphics, const LOGFONTW& font, SIZE room, UINT format);

  int LineHeight() const { return metrics_.height; }
  // At least one line. Lines below the room are left out.
  std::vector<TextLine> LinesOf(std::wstring_view text) const;

 private:
  struct Piece {
    std::wstring_view line;
    std::size_t consumed = 0;  // with the separator after it
  };

  bool Has(UINT flag) const { return (format_ & flag) != 0; }
  bool IsLimited() const { return !Has(DT_NOCLIP | DT_CALCRECT); }
  int WidthOf(std::wstring_view text) const;
  std::size_t CountWithin(std::wstring_view text, int width) const;
  bool HasRoomFor(std::size_t line) const;
  // Whether text after that line can only be shown as an ellipsis.
  bool IsLastWhole(std::size_t line) const;
  Piece FirstOf(std::wstring_view text) const;
  Piece FirstWords(std::wstring_view paragraph) const;
  TextLine Plain(std::wstring_view text) const { return {text, WidthOf(text), false}; }
  TextLine WithDots(std::wstring_view text) const;
  // The text as the last line, with an ellipsis when it is too long.
  TextLine Last(std::wstring_view text) const;
  // The part of the text that fits into the last line, with an ellipsis when that is not all.
  TextLine Remainder(std::wstring_view text) const;

  GraphicsBackend& graphics_;
  const LOGFONTW& font_;
  const SIZE room_;
  const UINT format_;
  const TextMetrics metrics_;
};

}  // namespace platform
