#include "grid/grid_drawing.h"

namespace quillgate {
namespace {

constexpr int kFramePenWidth = 3;

UINT FlagsOf(GridTextLook look) {
  constexpr UINT kOneLine = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
  switch (look) {
    case GridTextLook::kCentred:
      return DT_CENTER | DT_WORDBREAK | DT_NOPREFIX | DT_END_ELLIPSIS;
    case GridTextLook::kLeft:
      return DT_LEFT | kOneLine;
    case GridTextLook::kRight:
      return DT_RIGHT | kOneLine;
    case GridTextLook::kWrapped:
      break;
  }
  return DT_LEFT | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL;
}

int LengthOf(std::wstring_view text) {
  return static_cast<int>(text.size());
}

}  // namespace

RECT NativeRect(const GridRect& area) {
  return {area.left, area.top, area.right, area.bottom};
}

GridDrawing::GridDrawing(HDC context)
    : context_(context),
      modeBefore_(::SetBkMode(context, TRANSPARENT)),
      colourBefore_(::SetTextColor(context, 0)) {}

GridDrawing::~GridDrawing() {
  if (penBefore_ != nullptr) ::SelectObject(context_, penBefore_);
  if (brushBefore_ != nullptr) ::SelectObject(context_, brushBefore_);
  if (fontBefore_ != nullptr) ::SelectObject(context_, fontBefore_);
  ::SetTextColor(context_, colourBefore_);
  ::SetBkMode(context_, modeBefore_);
}

void GridDrawing::UsePen(int width, GridColour colour) {
  if (pen_.IsValid() && penWidth_ == width && penColour_ == colour) return;
  PenHandle pen(::CreatePen(PS_SOLID, width, colour));
  const HGDIOBJ before = ::SelectObject(context_, pen.Get());
  if (penBefore_ == nullptr) penBefore_ = before;
  pen_ = std::move(pen);
  penWidth_ = width;
  penColour_ = colour;
}

void GridDrawing::UseBrush(GridColour colour) {
  if (brushColour_ == colour) return;
  BrushHandle brush(::CreateSolidBrush(colour));
  const HGDIOBJ before = ::SelectObject(context_, brush.Get());
  if (brushBefore_ == nullptr) brushBefore_ = before;
  brush_ = std::move(brush);
  brushColour_ = colour;
}

void GridDrawing::UseFont(GridFont font) {
  if (font == 0 || font_ == font) return;
  const HGDIOBJ before = ::SelectObject(context_, reinterpret_cast<HGDIOBJ>(font));
  if (fontBefore_ == nullptr) fontBefore_ = before;
  font_ = font;
}

void GridDrawing::Edge(const GridRect& area) {
  RECT native = NativeRect(area);
  ::DrawEdge(context_, &native, EDGE_ETCHED, BF_RECT | BF_MIDDLE | BF_ADJUST);
}

void GridDrawing::Box(const GridRect& area, GridColour line, GridColour fill) {
  UsePen(1, line);
  UseBrush(fill);
  ::Rectangle(context_, area.left, area.top, area.right, area.bottom);
}

void GridDrawing::UnusedArea(const GridRect& area) {
  const RECT native = NativeRect(area);
  ::FillRect(context_, &native, static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH)));
}

void GridDrawing::Text(std::wstring_view text, const GridRect& area, GridTextLook look,
                       GridFont font, GridColour colour) {
  UseFont(font);
  if (textColour_ != colour) ::SetTextColor(context_, colour);
  textColour_ = colour;
  RECT native = NativeRect(area);
  ::DrawTextW(context_, text.data(), LengthOf(text), &native, FlagsOf(look));
}

void GridDrawing::CheckBox(const GridRect& area, bool ticked) {
  RECT native = NativeRect(area);
  const UINT state = DFCS_BUTTONCHECK | (ticked ? DFCS_CHECKED : 0u);
  ::DrawFrameControl(context_, &native, DFC_BUTTON, state);
}

void GridDrawing::XorFrame(const GridRect& area, GridColour colour) {
  UsePen(kFramePenWidth, colour);
  const SelectedObject hollow(context_, ::GetStockObject(NULL_BRUSH));
  const int before = ::SetROP2(context_, R2_XORPEN);
  ::Rectangle(context_, area.left, area.top, area.right, area.bottom);
  ::SetROP2(context_, before);
}

std::int32_t GridDrawing::TextWidth(std::wstring_view text, GridFont font) {
  UseFont(font);
  SIZE size{};
  ::GetTextExtentPoint32W(context_, text.data(), LengthOf(text), &size);
  return size.cx;
}

std::int32_t GridDrawing::LineHeight(GridFont font) {
  UseFont(font);
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(context_, &metrics);
  return metrics.tmHeight;
}

std::int32_t GridDrawing::Ascent() {
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(context_, &metrics);
  return metrics.tmAscent;
}

}  // namespace quillgate
