#include "recording_grid_system.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace quillgate {
namespace {

std::string Number(std::int64_t value) {
  return std::to_string(value);
}

std::string Pair(std::int32_t first, std::int32_t second) {
  return Number(first) + "," + Number(second);
}

std::string Text(const GridRect& area) {
  return Pair(area.left, area.top) + "," + Pair(area.right, area.bottom);
}

std::string Text(GridSize size) {
  return Pair(size.width, size.height);
}

std::string Hex(GridColour colour) {
  char digits[16];
  std::snprintf(digits, sizeof(digits), "%x", colour);
  return digits;
}

// Characters beyond ASCII as "?".
std::string Narrow(std::wstring_view text) {
  std::string narrow;
  for (const wchar_t character : text)
    narrow += character > 0 && character < 0x80 ? static_cast<char>(character) : '?';
  return narrow;
}

std::string Name(GridBar bar) {
  return bar == GridBar::kVertical ? "vertical" : "horizontal";
}

std::string Name(GridTextLook look) {
  constexpr const char* kNames[] = {"centred", "left", "right", "wrapped"};
  return kNames[static_cast<int>(look)];
}

std::int32_t ValueOr(const std::map<GridFont, std::int32_t>& values, GridFont font,
                     std::int32_t other) {
  const auto found = values.find(font);
  return found == values.end() ? other : found->second;
}

}  // namespace

std::vector<std::string> RecordingGridSystem::Take() {
  return std::exchange(calls, {});
}

std::vector<std::string> RecordingGridSystem::CallsOf(const std::string& beginning) const {
  std::vector<std::string> found;
  std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
               [&](const std::string& call) { return call.starts_with(beginning); });
  return found;
}

void RecordingGridSystem::Record(std::string call) {
  calls.push_back(call);
  if (onCall) onCall(call);
}

void RecordingGridSystem::Notify(int code, std::uint32_t value) {
  Record("Notify " + Number(code) + " " + Number(value & 0xFFFFu) + "," + Number(value >> 16));
}

void RecordingGridSystem::NotifyMouseMove(const GridCell& cell) {
  Record("NotifyMouseMove " + Pair(cell.row, cell.col));
}

void RecordingGridSystem::NotifyDrawGraphic(const GridRect& inner) {
  Record("NotifyDrawGraphic " + Text(inner));
}

void RecordingGridSystem::Invalidate(const GridRect& area, bool erase) {
  Record("Invalidate " + Text(area) + (erase ? " erase" : ""));
}

void RecordingGridSystem::InvalidateAll(bool erase) {
  Record(erase ? "InvalidateAll erase" : "InvalidateAll");
}

void RecordingGridSystem::PaintNow() {
  Record("PaintNow");
}

GridSize RecordingGridSystem::ClientSize() {
  return SizeWithBars(barsShown[GridBar::kHorizontal], barsShown[GridBar::kVertical]);
}

GridSize RecordingGridSystem::SizeWithBars(bool horizontal, bool vertical) {
  return {clientSize.width - (vertical ? barSize.width : 0),
          clientSize.height - (horizontal ? barSize.height : 0)};
}

void RecordingGridSystem::SendSize(GridSize size) {
  Record("SendSize " + Text(size));
}

void RecordingGridSystem::PostDrawCursor() {
  Record("PostDrawCursor");
}

void RecordingGridSystem::TakeFocus() {
  Record("TakeFocus");
}

void RecordingGridSystem::FocusParent() {
  Record("FocusParent");
}

void RecordingGridSystem::SetPointer(GridPointer pointer) {
  Record(pointer == GridPointer::kSizeColumn ? "SetPointer column" : "SetPointer arrow");
}

void RecordingGridSystem::Beep() {
  Record("Beep");
}

std::optional<wchar_t> RecordingGridSystem::CharOf(int virtualKey) {
  const auto found = characters.find(virtualKey);
  if (found == characters.end()) return std::nullopt;
  return found->second;
}

void RecordingGridSystem::ShowBar(GridBar bar, bool shown) {
  barsShown[bar] = shown;
  Record("ShowBar " + Name(bar) + (shown ? " 1" : " 0"));
}

void RecordingGridSystem::SetBarRange(GridBar bar, std::int32_t last) {
  barRanges[bar] = last;
  Record("SetBarRange " + Name(bar) + " " + Number(last));
}

void RecordingGridSystem::SetBarPosition(GridBar bar, std::int32_t position) {
  barPositions[bar] = position;
  Record("SetBarPosition " + Name(bar) + " " + Number(position));
}

void RecordingGridSystem::CreateCaret(GridSize size) {
  Record("CreateCaret " + Text(size));
}

void RecordingGridSystem::DestroyCaret() {
  Record("DestroyCaret");
}

void RecordingGridSystem::ShowCaret() {
  Record("ShowCaret");
}

void RecordingGridSystem::HideCaret() {
  Record("HideCaret");
}

void RecordingGridSystem::SetCaretPlace(GridPoint place) {
  Record("SetCaretPlace " + Pair(place.x, place.y));
}

std::int32_t RecordingGridSystem::TextWidth(std::wstring_view text, GridFont font) {
  return static_cast<std::int32_t>(text.size()) * ValueOr(charWidths, font, 8);
}

std::int32_t RecordingGridSystem::LineHeight(GridFont font) {
  return ValueOr(lineHeights, font, 16);
}

void RecordingGridSystem::DrawEdge(const GridRect& area) {
  Record("DrawEdge " + Text(area));
}

void RecordingGridSystem::DrawBox(const GridRect& area, GridColour line, GridColour fill) {
  Record("DrawBox " + Text(area) + " " + Hex(line) + " " + Hex(fill));
}

void RecordingGridSystem::FillUnused(const GridRect& area) {
  Record("FillUnused " + Text(area));
}

void RecordingGridSystem::PutText(std::wstring_view text, const GridRect& area, GridTextLook look,
                                  GridFont font, GridColour colour) {
  Record("PutText " + Text(area) + " " + Name(look) + " font " +
         Number(static_cast<std::int64_t>(font)) + " colour " + Hex(colour) + " |" + Narrow(text) +
         "|");
}

void RecordingGridSystem::DrawCheckBox(const GridRect& area, bool ticked) {
  Record("DrawCheckBox " + Text(area) + (ticked ? " 1" : " 0"));
}

void RecordingGridSystem::XorFrame(const GridRect& area, GridColour colour) {
  Record("XorFrame " + Text(area) + " " + Hex(colour));
}

}  // namespace quillgate
