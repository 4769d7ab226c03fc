#include "frame/balloon_tip.h"

#include <commctrl.h>

#include <utility>

namespace quillgate {
namespace {

constexpr int kWidestLine = 300;  // pixels; longer texts are broken

TOOLINFOW ToolOf(HWND dialog) {
  TOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.uFlags = TTF_SUBCLASS;
  tool.hwnd = dialog;
  tool.uId = 1;
  return tool;
}

}  // namespace

// The system destroys it with its owner.
BalloonTip::~BalloonTip() {
  if (::IsWindow(window_)) ::DestroyWindow(window_);
}

void BalloonTip::Show(HWND dialog, const RECT& area, std::wstring text) {
  TOOLINFOW tool = ToolOf(dialog);
  if (window_ != nullptr) {
    ::SendMessageW(window_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  } else {
    window_ = ::CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr,
                                WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP | TTS_BALLOON, 0, 0, 0, 0,
                                dialog, nullptr, ::GetModuleHandleW(nullptr), nullptr);
  }
  text_ = std::move(text);
  tool.rect = area;
  tool.lpszText = text_.data();
  ::SendMessageW(window_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  ::SendMessageW(window_, TTM_SETMAXTIPWIDTH, 0, kWidestLine);
}

}  // namespace quillgate
