#include "frame/clipboard.h"

#include <algorithm>

#include "handles/handle.h"

namespace quillgate {
namespace {

// Has the clipboard open for a window, if it can be had.
class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner) : isOpen_(::OpenClipboard(owner) != FALSE) {}
  ~OpenedClipboard() {
    if (isOpen_) ::CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;

  bool IsOpen() const { return isOpen_; }

 private:
  const bool isOpen_;
};

// With a terminating null.
GlobalBlock BlockOf(const std::wstring& text) {
  GlobalBlock block(::GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t)));
  auto* copy = block.IsValid() ? static_cast<wchar_t*>(::GlobalLock(block.Get())) : nullptr;
  if (copy == nullptr) return {};
  std::copy_n(text.c_str(), text.size() + 1, copy);
  ::GlobalUnlock(block.Get());
  return block;
}

}  // namespace

bool CopyToClipboard(HWND owner, const std::wstring& text) {
  GlobalBlock block = BlockOf(text);
  if (!block.IsValid()) return false;
  const OpenedClipboard clipboard(owner);
  if (!clipboard.IsOpen() || !::EmptyClipboard()) return false;
  if (::SetClipboardData(CF_UNICODETEXT, block.Get()) == nullptr) return false;
  // The clipboard's from here on.
  block.Release();
  return true;
}

}  // namespace quillgate
