#include "frame/icon.h"

namespace quillgate {

IconHandle LoadSmallIcon(WORD number) {
  return IconHandle(
      static_cast<HICON>(::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(number),
                                      IMAGE_ICON, kSmallIconEdge, kSmallIconEdge, 0)));
}

}  // namespace quillgate
