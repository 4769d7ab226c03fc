#include "platform/gdi/device_context.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/gdi/desktop_graphics.h"
#include "platform/gdi/lent_dc.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

// A new memory context has a bitmap of one pixel selected, since one is always selected.
HBITMAP SmallestBitmap() {
  static const HBITMAP bitmap = [] {
    auto smallest = std::make_shared<Bitmap>(SIZE{1, 1});
    smallest->isStock = true;
    return InsertBitmap(std::move(smallest));
  }();
  return bitmap;
}

HDC InsertContext(std::shared_ptr<DeviceContext> context) {
  return static_cast<HDC>(Handles().Insert(HandleKind::kDeviceContext, std::move(context)));
}

}  // namespace

DeviceContext::DeviceContext(Kind contextKind) : kind(contextKind) {
  const auto stockFont = static_cast<HFONT>(::GetStockObject(SYSTEM_FONT));
  font.Replace(stockFont, Resolve<Font>(HandleKind::kFont, stockFont));
  const auto stockPen = static_cast<HPEN>(::GetStockObject(BLACK_PEN));
  pen.Replace(stockPen, Resolve<Pen>(HandleKind::kPen, stockPen));
  const auto stockBrush = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
  brush.Replace(stockBrush, BrushOf(stockBrush));
  if (kind != Kind::kMemory) return;
  bitmap.Replace(SmallestBitmap(), Resolve<Bitmap>(HandleKind::kBitmap, SmallestBitmap()));
}

DeviceContext::DeviceContext(Canvas& canvas) : DeviceContext(Kind::kLent) {
  lent_ = &canvas;
}

DeviceContext::DeviceContext(DrawOnTarget target) : DeviceContext(Kind::kWindow) {
  target_ = std::move(target);
}

TextStyle DeviceContext::Style() const {
  TextStyle style{font.Get()->description, textColour};
  if (backgroundMode == OPAQUE) style.background = backgroundColour;
  return style;
}

bool DeviceContext::Draw(const char* function, const std::function<void(Canvas&)>& work) {
  switch (kind) {
    case Kind::kLent:
      work(*lent_);
      return true;
    case Kind::kMemory:
      return WithGraphics(
          [&](GraphicsBackend& graphics) { work(bitmap.Get()->Surface(graphics)); });
    case Kind::kWindow: {
      const Drawing outcome = target_(work);
      if (outcome != Drawing::kNoSurface) return outcome == Drawing::kDone;
      break;
    }
    case Kind::kScreen:
      break;
  }
  LogLine(std::string(function) + ": the screen, dialogs and controls cannot be drawn on");
  ::SetLastError(ERROR_NOT_SUPPORTED);
  return false;
}

HDC MakeContext(std::shared_ptr<DeviceContext> context) {
  if (!WithGraphics([](GraphicsBackend&) {})) return nullptr;
  return InsertContext(std::move(context));
}

bool EndContext(HDC handle, std::initializer_list<DeviceContext::Kind> kinds) {
  const auto context = ContextOf(handle);
  if (context == nullptr) return false;
  if (std::ranges::find(kinds, context->kind) == kinds.end()) {
    ::SetLastError(ERROR_INVALID_HANDLE);
    return false;
  }
  return Handles().Remove(HandleKind::kDeviceContext, handle) != nullptr;
}

std::shared_ptr<DeviceContext> ContextOf(HDC context) {
  auto found = Resolve<DeviceContext>(HandleKind::kDeviceContext, context);
  if (found == nullptr) ::SetLastError(ERROR_INVALID_HANDLE);
  return found;
}

LentDc::LentDc(Canvas& canvas) : handle_(InsertContext(std::make_shared<DeviceContext>(canvas))) {}

LentDc::~LentDc() {
  Handles().Remove(HandleKind::kDeviceContext, handle_);
}

}  // namespace platform
