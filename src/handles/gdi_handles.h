// Owned GDI handles, and the scope in which an object is selected into a device context.
#pragma once

#include "handles/handle.h"

namespace quillgate {

template <class Handle>
struct GdiObjectTrait {
  using Type = Handle;
  static Type Invalid() { return nullptr; }
  static void Close(Type handle) { ::DeleteObject(handle); }
};
using FontHandle = UniqueHandle<GdiObjectTrait<HFONT>>;
using BrushHandle = UniqueHandle<GdiObjectTrait<HBRUSH>>;
using PenHandle = UniqueHandle<GdiObjectTrait<HPEN>>;
using BitmapHandle = UniqueHandle<GdiObjectTrait<HBITMAP>>;

// Device contexts created with CreateCompatibleDC.
struct MemoryDcTrait {
  using Type = HDC;
  static Type Invalid() { return nullptr; }
  static void Close(Type handle) { ::DeleteDC(handle); }
};
using MemoryDcHandle = UniqueHandle<MemoryDcTrait>;

// The device context of a window's client area, released in the destructor. Null when the window
// does not exist.
class WindowDc {
 public:
  explicit WindowDc(HWND window) : window_(window), context_(::GetDC(window)) {}
  ~WindowDc() {
    if (context_ != nullptr) ::ReleaseDC(window_, context_);
  }
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;

  HDC Get() const { return context_; }

 private:
  HWND window_;
  HDC context_;
};

// Selects an object into a device context. The destructor selects the previous object again.
class SelectedObject {
 public:
  SelectedObject(HDC context, HGDIOBJ object)
      : context_(context), before_(::SelectObject(context, object)) {}
  ~SelectedObject() { ::SelectObject(context_, before_); }
  SelectedObject(const SelectedObject&) = delete;
  SelectedObject& operator=(const SelectedObject&) = delete;

 private:
  HDC context_;
  HGDIOBJ before_;
};

}  // namespace quillgate
