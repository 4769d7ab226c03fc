// DrawText: lines of text in a rectangle.
#include <windows.h>

#include <algorithm>
#include <string>

#include "platform/gdi/desktop_graphics.h"
#include "platform/gdi/device_context.h"
#include "platform/gdi/rect.h"
#include "platform/gdi/text_argument.h"
#include "platform/gdi/text_layout.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr UINT kSupportedFlags = DT_CENTER | DT_RIGHT | DT_VCENTER | DT_BOTTOM | DT_WORDBREAK |
                                 DT_SINGLELINE | DT_NOCLIP | DT_CALCRECT | DT_NOPREFIX |
                                 DT_EDITCONTROL | DT_END_ELLIPSIS;

// A text without its ampersands, each of which marks the next character as underlined.
struct MarkedText {
  std::wstring text;
  std::size_t underlined = std::wstring::npos;
};

MarkedText WithoutMarks(std::wstring_view text) {
  MarkedText marked;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'&') {
      if (++i == text.size()) break;
      if (text[i] != L'&') marked.underlined = marked.text.size();
    }
    marked.text += text[i];
  }
  return marked;
}

// The parameters of one DrawText call. All but the text come from the device context.
class TextInBox {
 public:
  TextInBox(GraphicsBackend& graphics, const TextStyle& style, const RECT& area, UINT format)
      : graphics_(graphics),
        style_(style),
        area_(area),
        format_(format),
        layout_(graphics, style.font, {area.right - area.left, area.bottom - area.top}, format) {
    if ((format & DT_NOCLIP) == 0) style_.clip = area;
  }

  // Both return the value that DrawText returns.
  int Measure(std::wstring_view text, RECT& area) const;
  int Draw(Canvas& canvas, std::wstring_view text, std::size_t underlined) const;

 private:
  int LeftOf(const TextLine& line) const;
  int TopOf(int height) const;
  void DrawLine(Canvas& canvas, const TextLine& line, POINT position) const;
  void Underline(Canvas& canvas, const TextLine& line, POINT position, std::size_t character) const;

  GraphicsBackend& graphics_;
  TextStyle style_;
  const RECT area_;
  const UINT format_;
  const TextLayout layout_;
};

int TextInBox::Measure(std::wstring_view text, RECT& area) const {
  const std::vector<TextLine> lines = layout_.LinesOf(text);
  const auto widest = std::ranges::max_element(lines, {}, &TextLine::width);
  const int height = static_cast<int>(lines.size()) * layout_.LineHeight();
  const int bottom = TopOf(height) + height;
  area.right = area.left + widest->width;
  area.bottom = area.top + height;
  return bottom - area_.top;
}

int TextInBox::Draw(Canvas& canvas, std::wstring_view text, std::size_t underlined) const {
  const std::vector<TextLine> lines = layout_.LinesOf(text);
  const int height = static_cast<int>(lines.size()) * layout_.LineHeight();
  const int top = TopOf(height);
  int y = top;
  for (const TextLine& line : lines) {
    const POINT position{LeftOf(line), y};
    DrawLine(canvas, line, position);
    const auto begin = static_cast<std::size_t>(line.text.data() - text.data());
    if (underlined - begin < line.text.size())
      Underline(canvas, line, position, underlined - begin);
    y += layout_.LineHeight();
  }
  return y - area_.top;
}

int TextInBox::LeftOf(const TextLine& line) const {
  if ((format_ & DT_CENTER) != 0) return area_.left + (area_.right - area_.left - line.width) / 2;
  return (format_ & DT_RIGHT) != 0 ? area_.right - line.width : area_.left;
}

// Only a single line is aligned vertically.
int TextInBox::TopOf(int height) const {
  if ((format_ & DT_SINGLELINE) == 0) return area_.top;
  if ((format_ & DT_VCENTER) != 0) return area_.top + (area_.bottom - area_.top - height) / 2;
  return (format_ & DT_BOTTOM) != 0 ? area_.bottom - height : area_.top;
}

void TextInBox::DrawLine(Canvas& canvas, const TextLine& line, POINT position) const {
  if (line.endsInDots) {
    canvas.DrawText(std::wstring(line.text).append(kDots), position.x, position.y, style_);
  } else if (!line.text.empty()) {
    canvas.DrawText(line.text, position.x, position.y, style_);
  }
}

void TextInBox::Underline(Canvas& canvas, const TextLine& line, POINT position,
                          std::size_t character) const {
  const int left =
      position.x + graphics_.MeasureText(line.text.substr(0, character), style_.font).cx;
  const int width = graphics_.MeasureText(line.text.substr(character, 1), style_.font).cx;
  const int top = position.y + graphics_.MetricsOf(style_.font).ascent + 1;
  RECT rule{left, top, left + width, top + 1};
  if (style_.clip.has_value()) rule = Intersection(rule, area_);
  if (!IsEmpty(rule)) canvas.Fill(rule, style_.colour);
}

bool IsSupported(UINT format, const DRAWTEXTPARAMS* parameters) {
  if ((format & ~kSupportedFlags) == 0 && parameters == nullptr) return true;
  LogLine("DrawTextExW: tabs, margins, paths and texts from right to left are not known");
  return false;
}

int DrawTextIn(DeviceContext& context, std::wstring_view text, RECT& area, UINT format) {
  MarkedText marked;
  if ((format & DT_NOPREFIX) == 0 && text.find(L'&') != std::wstring_view::npos) {
    marked = WithoutMarks(text);
    text = marked.text;
  }
  int height = 0;
  if ((format & DT_CALCRECT) != 0) {
    WithGraphics([&](GraphicsBackend& graphics) {
      height = TextInBox(graphics, context.Style(), area, format).Measure(text, area);
    });
    return height;
  }
  const auto draw = [&](Canvas& canvas) {
    WithGraphics([&](GraphicsBackend& graphics) {
      const TextInBox box(graphics, context.Style(), area, format);
      height = box.Draw(canvas, text, marked.underlined);
    });
  };
  context.Draw("DrawTextExW", std::ref(draw));
  return height;
}

}  // namespace
}  // namespace platform

extern "C" {

int WINAPI DrawTextExW(HDC context, LPWSTR text, int length, LPRECT area, UINT format,
                       LPDRAWTEXTPARAMS parameters) try {
  const auto found = platform::ContextOf(context);
  if (found == nullptr) return 0;
  const auto shown = platform::TextArgument(text, length);
  if (!shown.has_value()) return 0;
  if (area == nullptr || !platform::IsSupported(format, parameters)) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  return platform::DrawTextIn(*found, *shown, *area, format);
} catch (...) {
  return platform::FailedCall(0);
}

// DT_MODIFYSTRING is not supported, so the text is not modified.
int WINAPI DrawTextW(HDC context, LPCWSTR text, int length, LPRECT area, UINT format) try {
  return ::DrawTextExW(context, const_cast<LPWSTR>(text), length, area, format, nullptr);
} catch (...) {
  return platform::FailedCall(0);
}

}  // extern "C"
