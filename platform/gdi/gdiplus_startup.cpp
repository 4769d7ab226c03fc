#include <algorithm>
#include <mutex>
#include <vector>

#include "platform/gdi/gdiplus_objects.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

using Gdiplus::GpStatus;

struct Startups {
  std::mutex mutex;
  std::vector<ULONG_PTR> tokens;
  ULONG_PTR lastToken = 0;
};

Startups& State() {
  static Startups& state = *new Startups;
  return state;
}

// Programs that suppress the background thread of GDI+ call these hooks instead. There is neither a
// thread nor work to do here.
GpStatus WINAPI Hook(ULONG_PTR* token) {
  if (token == nullptr) return Gdiplus::InvalidParameter;
  *token = 1;
  return Gdiplus::Ok;
}

void WINAPI Unhook(ULONG_PTR /*token*/) {}

template <class Function>
FARPROC Export(Function* function) {
  return reinterpret_cast<FARPROC>(function);
}

}  // namespace

bool IsGdiplusStarted() {
  Startups& state = State();
  const std::lock_guard lock(state.mutex);
  return !state.tokens.empty();
}

GpStatus EndGdiplusObject(HandleKind kind, const void* pointer) {
  if (!IsGdiplusStarted()) return Gdiplus::GdiplusNotInitialized;
  return Handles().Remove(kind, pointer) != nullptr ? Gdiplus::Ok : Gdiplus::InvalidParameter;
}

ExportTable GdiplusExports() {
  namespace flat = Gdiplus::DllExports;
  return {{"GdiplusStartup", Export(Gdiplus::GdiplusStartup)},
          {"GdiplusShutdown", Export(Gdiplus::GdiplusShutdown)},
          {"GdipCreateFromHDC", Export(flat::GdipCreateFromHDC)},
          {"GdipDeleteGraphics", Export(flat::GdipDeleteGraphics)},
          {"GdipSetTextRenderingHint", Export(flat::GdipSetTextRenderingHint)},
          {"GdipCreateFontFamilyFromName", Export(flat::GdipCreateFontFamilyFromName)},
          {"GdipDeleteFontFamily", Export(flat::GdipDeleteFontFamily)},
          {"GdipCreateFont", Export(flat::GdipCreateFont)},
          {"GdipDeleteFont", Export(flat::GdipDeleteFont)},
          {"GdipCreateSolidFill", Export(flat::GdipCreateSolidFill)},
          {"GdipDeleteBrush", Export(flat::GdipDeleteBrush)},
          {"GdipDrawString", Export(flat::GdipDrawString)}};
}

}  // namespace platform

namespace Gdiplus {

extern "C" {

GpStatus WINAPI GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input,
                               GdiplusStartupOutput* output) try {
  if (token == nullptr || input == nullptr) return InvalidParameter;
  if (input->GdiplusVersion != 1) return UnsupportedGdiplusVersion;
  if (input->SuppressBackgroundThread != FALSE) {
    if (output == nullptr) return InvalidParameter;
    output->NotificationHook = platform::Hook;
    output->NotificationUnhook = platform::Unhook;
  }
  platform::Startups& state = platform::State();
  const std::lock_guard lock(state.mutex);
  *token = ++state.lastToken;
  state.tokens.push_back(*token);
  return Ok;
} catch (...) {
  platform::ErrorOfException();
  return Gdiplus::GenericError;
}

void WINAPI GdiplusShutdown(ULONG_PTR token) try {
  platform::Startups& state = platform::State();
  const std::lock_guard lock(state.mutex);
  std::erase(state.tokens, token);
} catch (...) {
  platform::ErrorOfException();
}

}  // extern "C"

}  // namespace Gdiplus
