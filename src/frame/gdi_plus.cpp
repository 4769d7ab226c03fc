#include "frame/gdi_plus.h"

namespace quillgate {
namespace {

// Gets entry points of a library and records whether all of them were found.
class Binder {
 public:
  explicit Binder(HMODULE library) : library_(library) {}

  template <class Entry>
  Binder& Bind(const char* name, Entry& entry) {
    entry = reinterpret_cast<Entry>(::GetProcAddress(library_, name));
    complete_ = complete_ && entry != nullptr;
    return *this;
  }
  bool IsComplete() const { return complete_; }

 private:
  HMODULE library_;
  bool complete_ = true;
};

bool BindAll(HMODULE library, GdiPlusFunctions& to) {
  return Binder(library)
      .Bind("GdiplusStartup", to.startup)
      .Bind("GdiplusShutdown", to.shutdown)
      .Bind("GdipCreateFromHDC", to.createFromHdc)
      .Bind("GdipDeleteGraphics", to.deleteGraphics)
      .Bind("GdipSetTextRenderingHint", to.setTextRenderingHint)
      .Bind("GdipCreateFontFamilyFromName", to.createFontFamilyFromName)
      .Bind("GdipDeleteFontFamily", to.deleteFontFamily)
      .Bind("GdipCreateFont", to.createFont)
      .Bind("GdipDeleteFont", to.deleteFont)
      .Bind("GdipCreateSolidFill", to.createSolidFill)
      .Bind("GdipDeleteBrush", to.deleteBrush)
      .Bind("GdipDrawString", to.drawString)
      .IsComplete();
}

}  // namespace

void GdiPlus::Start() {
  if (token_ != 0) return;
  library_.Reset(::LoadLibraryW(L"gdiplus.dll"));
  if (!library_.IsValid()) return;
  const GdiPlusStartupInput input;
  if (BindAll(library_.Get(), functions_) && functions_.startup(&token_, &input, nullptr) == 0) {
    return;
  }
  token_ = 0;
  library_.Reset();
}

void GdiPlus::Shutdown() {
  if (token_ == 0) return;
  functions_.shutdown(token_);
  token_ = 0;
  library_.Reset();
}

}  // namespace quillgate
