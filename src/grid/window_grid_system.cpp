#include "grid/window_grid_system.h"

#include <array>

#include "grid/grid_messages.h"
#include "grid/grid_notifications.h"

namespace quillgate {
namespace {

int NativeBar(GridBar bar) {
  return bar == GridBar::kVertical ? SB_VERT : SB_HORZ;
}

LPARAM PointerValue(const void* pointer) {
  return reinterpret_cast<LPARAM>(pointer);
}

}  // namespace

WindowGridSystem::WindowGridSystem(HWND window, UINT id, std::size_t slotNumber,
                                   const std::uint32_t& generation)
    : window_(window),
      id_(id),
      slotNumber_(slotNumber),
      slotGeneration_(generation),
      ownGeneration_(generation) {}

void WindowGridSystem::RequireSlot() const {
  if (slotGeneration_ != ownGeneration_) throw SlotLost();
}

// --- the parent ---

void WindowGridSystem::SendCommand(UINT id, int code, LPARAM value) {
  ::SendMessageW(::GetParent(window_), WM_COMMAND, MAKEWPARAM(id, code), value);
  RequireSlot();
}

void WindowGridSystem::Notify(int code, std::uint32_t value) {
  SendCommand(id_, code, static_cast<LPARAM>(value));
}

void WindowGridSystem::NotifyMouseMove(const GridCell& cell) {
  SendCommand(kGridMouseMoveId, GCN_MOUSEMOVE, PointerValue(&cell));
}

void WindowGridSystem::NotifyDrawGraphic(const GridRect& inner) {
  const RECT native = NativeRect(inner);
  SendCommand(id_, GCN_DRAWGRAPHIC, PointerValue(&native));
}

// --- the window ---

void WindowGridSystem::Invalidate(const GridRect& area, bool erase) {
  const RECT native = NativeRect(area);
  ::InvalidateRect(window_, &native, erase);
}

void WindowGridSystem::InvalidateAll(bool erase) {
  ::InvalidateRect(window_, nullptr, erase);
}

void WindowGridSystem::PaintNow() {
  ::UpdateWindow(window_);
  RequireSlot();
}

GridSize WindowGridSystem::ClientSize() {
  RECT area{};
  ::GetClientRect(window_, &area);
  return {area.right, area.bottom};
}

GridSize WindowGridSystem::SizeWithBars(bool horizontal, bool vertical) {
  const auto style = static_cast<DWORD>(::GetWindowLongPtrW(window_, GWL_STYLE));
  const int width = ::GetSystemMetrics(SM_CXVSCROLL);
  const int height = ::GetSystemMetrics(SM_CYHSCROLL);
  GridSize size = ClientSize();
  if ((style & WS_VSCROLL) != 0) size.width += width;
  if ((style & WS_HSCROLL) != 0) size.height += height;
  if (vertical) size.width -= width;
  if (horizontal) size.height -= height;
  return size;
}

void WindowGridSystem::SendSize(GridSize size) {
  ::SendMessageW(window_, WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(size.width, size.height));
  RequireSlot();
}

void WindowGridSystem::PostDrawCursor() {
  ::PostMessageW(window_, GCM_DRAWCURSOR, slotNumber_, 0);
}

void WindowGridSystem::TakeFocus() {
  ::SetFocus(window_);
  RequireSlot();
}

void WindowGridSystem::FocusParent() {
  ::SetFocus(::GetParent(window_));
  RequireSlot();
}

void WindowGridSystem::SetPointer(GridPointer pointer) {
  const auto* name = pointer == GridPointer::kSizeColumn ? IDC_SIZEWE : IDC_ARROW;
  ::SetCursor(::LoadCursorW(nullptr, name));
}

void WindowGridSystem::Beep() {
  ::MessageBeep(0);
}

std::optional<wchar_t> WindowGridSystem::CharOf(int virtualKey) {
  constexpr WORD kCharacters = 256;
  std::array<BYTE, 256> state{};
  if (!::GetKeyboardState(state.data())) return std::nullopt;
  WORD character = 0;
  const int count = ::ToAscii(static_cast<UINT>(virtualKey), 0, state.data(), &character, 0);
  if (count != 1 || character >= kCharacters) return std::nullopt;
  return static_cast<wchar_t>(character);
}

// --- scroll bars ---

void WindowGridSystem::ShowBar(GridBar bar, bool shown) {
  ::ShowScrollBar(window_, NativeBar(bar), shown);
}

void WindowGridSystem::SetBarRange(GridBar bar, std::int32_t last) {
  ::SetScrollRange(window_, NativeBar(bar), 1, last, TRUE);
}

void WindowGridSystem::SetBarPosition(GridBar bar, std::int32_t position) {
  ::SetScrollPos(window_, NativeBar(bar), position, TRUE);
}

// --- the caret ---

void WindowGridSystem::CreateCaret(GridSize size) {
  ::CreateCaret(window_, nullptr, size.width, size.height);
}

void WindowGridSystem::DestroyCaret() {
  ::DestroyCaret();
}

void WindowGridSystem::ShowCaret() {
  ::ShowCaret(window_);
}

void WindowGridSystem::HideCaret() {
  ::HideCaret(window_);
}

void WindowGridSystem::SetCaretPosition(GridPoint position) {
  ::SetCaretPos(position.x, position.y);
}

// --- measuring and drawing ---

template <class Work>
auto WindowGridSystem::WithDrawing(const Work& work) {
  if (drawing_ != nullptr) return work(*drawing_);
  const WindowDc context(window_);
  GridDrawing drawing(context.Get());
  return work(drawing);
}

std::int32_t WindowGridSystem::TextWidth(std::wstring_view text, GridFont font) {
  return WithDrawing([&](GridDrawing& drawing) { return drawing.TextWidth(text, font); });
}

std::int32_t WindowGridSystem::LineHeight(GridFont font) {
  return WithDrawing([&](GridDrawing& drawing) { return drawing.LineHeight(font); });
}

std::int32_t WindowGridSystem::WindowFontAscent() {
  const WindowDc context(window_);
  return GridDrawing(context.Get()).Ascent();
}

void WindowGridSystem::DrawEdge(const GridRect& area) {
  WithDrawing([&](GridDrawing& drawing) { drawing.Edge(area); });
}

void WindowGridSystem::DrawBox(const GridRect& area, GridColour line, GridColour fill) {
  WithDrawing([&](GridDrawing& drawing) { drawing.Box(area, line, fill); });
}

void WindowGridSystem::FillUnused(const GridRect& area) {
  WithDrawing([&](GridDrawing& drawing) { drawing.UnusedArea(area); });
}

void WindowGridSystem::PutText(std::wstring_view text, const GridRect& area, GridTextLook look,
                               GridFont font, GridColour colour) {
  WithDrawing([&](GridDrawing& drawing) { drawing.Text(text, area, look, font, colour); });
}

void WindowGridSystem::DrawCheckBox(const GridRect& area, bool ticked) {
  WithDrawing([&](GridDrawing& drawing) { drawing.CheckBox(area, ticked); });
}

void WindowGridSystem::XorFrame(const GridRect& area, GridColour colour) {
  WithDrawing([&](GridDrawing& drawing) { drawing.XorFrame(area, colour); });
}

// --- WM_PAINT ---

GridPainting::GridPainting(HWND window, WindowGridSystem& system)
    : window_(window), system_(system) {
  ::BeginPaint(window_, &paint_);
  system_.DrawOn(&drawing_.emplace(paint_.hdc));
}

GridPainting::~GridPainting() {
  system_.DrawOn(nullptr);
  drawing_.reset();
  ::EndPaint(window_, &paint_);
}

}  // namespace quillgate
