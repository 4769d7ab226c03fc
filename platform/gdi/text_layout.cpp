#include "platform/gdi/text_layout.h"

#include <algorithm>
#include <string>

namespace platform {
namespace {

constexpr std::wstring_view kLineEnds = L"\r\n";

std::size_t LineEndLength(std::wstring_view text) {
  return text.starts_with(kLineEnds) ? kLineEnds.size() : std::min<std::size_t>(text.size(), 1);
}

}  // namespace

TextLayout::TextLayout(GraphicsBackend& graphics, const LOGFONTW& font, SIZE room, UINT format)
    : graphics_(graphics),
      font_(font),
      room_(room),
      format_(format),
      metrics_(graphics.MetricsOf(font)) {}

std::vector<TextLine> TextLayout::LinesOf(std::wstring_view text) const {
  std::vector<TextLine> lines;
  if (Has(DT_SINGLELINE)) {
    lines.push_back(Last(text));
    return lines;
  }
  do {
    if (IsLastWhole(lines.size())) {
      lines.push_back(Remainder(text));
      break;
    }
    const Piece piece = FirstOf(text);
    text.remove_prefix(piece.consumed);
    lines.push_back(text.empty() ? Last(piece.line) : Plain(piece.line));
  } while (!text.empty() && HasRoomFor(lines.size()));
  return lines;
}

int TextLayout::WidthOf(std::wstring_view text) const {
  return graphics_.MeasureText(text, font_).cx;
}

std::size_t TextLayout::CountWithin(std::wstring_view text, int width) const {
  return graphics_.CountWithin(text, width, font_);
}

bool TextLayout::HasRoomFor(std::size_t line) const {
  if (!IsLimited()) return true;
  const int top = static_cast<int>(line) * metrics_.height;
  return Has(DT_EDITCONTROL) ? top + metrics_.height <= room_.cy : top < room_.cy;
}

bool TextLayout::IsLastWhole(std::size_t line) const {
  return Has(DT_END_ELLIPSIS) && IsLimited() &&
         (static_cast<int>(line) + 2) * metrics_.height > room_.cy;
}

TextLayout::Piece TextLayout::FirstOf(std::wstring_view text) const {
  const std::wstring_view paragraph = text.substr(0, text.find_first_of(kLineEnds));
  Piece piece{paragraph, paragraph.size()};
  if (Has(DT_WORDBREAK)) piece = FirstWords(paragraph);
  if (piece.consumed == paragraph.size())
    piece.consumed += LineEndLength(text.substr(paragraph.size()));
  return piece;
}

TextLayout::Piece TextLayout::FirstWords(std::wstring_view paragraph) const {
  const std::size_t count = CountWithin(paragraph, room_.cx);
  if (count == paragraph.size()) return {paragraph, count};
  std::size_t end = paragraph.rfind(L' ', count);
  if (end == std::wstring_view::npos) {
    // The first word alone is too long.
    if (Has(DT_EDITCONTROL)) end = std::max<std::size_t>(count, 1);
    end = std::min(paragraph.find(L' '), end);
    if (end == std::wstring_view::npos) return {paragraph, paragraph.size()};
  }
  const std::size_t next = std::min(paragraph.find_first_not_of(L' ', end), paragraph.size());
  const std::wstring_view line = paragraph.substr(0, end);
  const std::size_t lineEnd = line.find_last_not_of(L' ');
  return {line.substr(0, lineEnd == std::wstring_view::npos ? 0 : lineEnd + 1), next};
}

TextLine TextLayout::WithDots(std::wstring_view text) const {
  // At least one character stays, even when it does not fit.
  const int room = room_.cx - metrics_.dotsWidth;
  const std::size_t count = std::max<std::size_t>(CountWithin(text, room), 1);
  TextLine line{text.substr(0, count), 0, true};
  line.width = WidthOf(std::wstring(line.text).append(kDots));
  return line;
}

TextLine TextLayout::Last(std::wstring_view text) const {
  TextLine line = Plain(text);
  return Has(DT_END_ELLIPSIS) && line.width > room_.cx ? WithDots(text) : line;
}

TextLine TextLayout::Remainder(std::wstring_view text) const {
  const std::wstring_view paragraph = text.substr(0, text.find_first_of(kLineEnds));
  const std::size_t end = paragraph.size() + LineEndLength(text.substr(paragraph.size()));
  return end < text.size() ? WithDots(paragraph) : Last(paragraph);
}

}  // namespace platform
