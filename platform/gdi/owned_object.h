// Owning pointers to graphics objects that the layer creates for itself.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace platform {

struct GdiObjectDeleter {
  void operator()(HGDIOBJ object) const { ::DeleteObject(object); }
};

using OwnedFont = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiObjectDeleter>;
using OwnedBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, GdiObjectDeleter>;

}  // namespace platform
