#include "platform/user/cursor_source.h"

#include "platform/kernel/seam.h"

namespace platform {
namespace {

Seam<CursorSource>& Source() {
  static auto& seam = *new Seam<CursorSource>;
  return seam;
}

}  // namespace

void SetCursorSource(CursorSource source) {
  Source().Set(std::move(source));
}

CursorSource CurrentCursorSource() {
  return Source().Get();
}

}  // namespace platform
