// Icons loaded from the program's resources. The caller owns them.
#pragma once

#include "handles/handle.h"

namespace quillgate {

struct IconTrait {
  using Type = HICON;
  static Type Invalid() { return nullptr; }
  static void Close(Type icon) { ::DestroyIcon(icon); }
};
using IconHandle = UniqueHandle<IconTrait>;

// Width and height of the icons in the menu and the notification area, in pixels.
inline constexpr int kSmallIconEdge = 16;

// Loads the icon resource of this number; invalid when it cannot be loaded.
IconHandle LoadSmallIcon(WORD number);

}  // namespace quillgate
