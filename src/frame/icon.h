// Icons of the program's resources, loaded for one owner.
#pragma once

#include "handles/handle.h"

namespace quillgate {

struct IconTrait {
  using Type = HICON;
  static Type Invalid() { return nullptr; }
  static void Close(Type icon) { ::DestroyIcon(icon); }
};
using IconHandle = UniqueHandle<IconTrait>;

// The edge of the icons in the menu and the notification area, in pixels.
inline constexpr int kSmallIconEdge = 16;

// The icon of that number; invalid when it cannot be loaded.
IconHandle LoadSmallIcon(WORD number);

}  // namespace quillgate
