// One icon of the notification area with its tip and balloons, and the hidden window that receives
// its mouse messages. Created and destroyed on the service main thread, which runs the handlers.
// Icon, tip and balloons may be changed on any thread; the calls do not wait for the thread of the
// window.
#pragma once

#include <windows.h>
#include <shellapi.h>

#include <string>

#include "frame/icon.h"
#include "handles/critical_section.h"

namespace quillgate {

// The numbers that the handlers use.
enum class MouseButton { kLeft = 1, kRight = 2 };

class TrayIcon {
 public:
  // Creates the window and adds the icon, hidden. If there is no notification area yet, the icon is
  // added when one appears. Throws std::runtime_error when the window cannot be created.
  TrayIcon();
  virtual ~TrayIcon();
  TrayIcon(const TrayIcon&) = delete;
  TrayIcon& operator=(const TrayIcon&) = delete;

  HWND Window() const { return window_; }

  // Each returns whether the notification area accepted the change. A change that was not accepted
  // is kept and sent again with the next one.
  bool ShowIcon();
  // Takes ownership of the icon; the previous one is destroyed.
  bool SetIconHandle(IconHandle icon);
  // At most 127 characters are shown.
  bool SetTipText(const std::wstring& text);
  // At most 255 characters of text and 63 of title; `iconFlags` is one of NIIF_. If the
  // notification area has lost the icon, the icon is added again with the balloon, and the function
  // still returns false.
  bool ShowBalloon(const std::wstring& text, const std::wstring& title, DWORD iconFlags);

 protected:
  // Handlers of the mouse messages. The default is to do nothing; exceptions are dropped.
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
  // Sends the record to the notification area.
  bool Send(DWORD message);

  HWND window_ = nullptr;
  const UINT taskbarCreated_;
  CriticalSection lock_;
  NOTIFYICONDATAW record_{};
  IconHandle icon_;
};

}  // namespace quillgate
