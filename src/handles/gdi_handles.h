// Owned handles of the drawing system, and the scope in which an object is selected.
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

// Contexts made by CreateCompatibleDC.
struct MemoryDcTrait {
  using Type = HDC;
  static Type Invalid() { return nullptr; }
  static void Close(Type handle) { ::DeleteDC(handle); }
};
using MemoryDcHandle = UniqueHandle<MemoryDcTrait>;

// The context of what a window shows, for as long as it lives; null when the window is gone.
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

// Selects an object into a device context and, at its end, what was selected before.
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
