// One icon of the notification area with its tip and balloons, and the hidden window that hears of
// clicks on it. Made and destroyed on the service main thread, where the handlers run; icon, tip
// and balloons may be changed on any thread and do not wait for the window's thread.
#pragma once

#include <windows.h>
#include <shellapi.h>

#include <string>

#include "frame/icon.h"
#include "handles/critical_section.h"

namespace quillgate {

// As the handlers number them.
enum class MouseButton { kLeft = 1, kRight = 2 };

class TrayIcon {
 public:
  // Makes the window and adds the icon, hidden. Where there is no notification area yet, the icon
  // comes when one appears. Throws std::runtime_error when there can be no window.
  TrayIcon();
  virtual ~TrayIcon();
  TrayIcon(const TrayIcon&) = delete;
  TrayIcon& operator=(const TrayIcon&) = delete;

  HWND Window() const { return window_; }

  // Each tells whether the notification area took the change. If not, the change is kept and shown
  // with the next one that is taken.
  bool ShowIcon();
  // Owns the icon from now on; the one before is destroyed.
  bool SetIconHandle(IconHandle icon);
  // At most 127 characters are shown.
  bool SetTipText(const std::wstring& text);
  // At most 255 characters of text and 63 of title; `iconFlags` is one of NIIF_. An icon that the
  // area has lost is added again, with the balloon; the answer is then still false.
  bool ShowBalloon(const std::wstring& text, const std::wstring& title, DWORD iconFlags);

 protected:
  // What the user does with the icon. Nothing happens unless overridden; what is thrown is dropped.
  virtual void OnButtonDown(MouseButton) {}
  virtual void OnButtonUp(MouseButton) {}
  virtual void OnDoubleClick() {}
  virtual void OnBalloonClick() {}

 private:
  static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam,
                                     LPARAM lParam) noexcept;
  static void RegisterWindowClass();

  void Route(UINT message, LPARAM lParam);
  void OnCallback(UINT event);
  void ClearBalloon();
  void AddAgain();
  // Sends the record as it is.
  bool Send(DWORD message);

  HWND window_ = nullptr;
  const UINT taskbarCreated_;
  CriticalSection lock_;
  NOTIFYICONDATAW record_{};
  IconHandle icon_;
};

}  // namespace quillgate
