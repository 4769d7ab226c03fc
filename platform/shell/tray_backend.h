// The desktop's side of the notification area. Lives on the window thread.
#pragma once

#include <windows.h>

#include <chrono>
#include <compare>
#include <memory>
#include <string>

#include "platform/gdi/image.h"

namespace platform {

struct TrayIconKey {
  HWND window = nullptr;
  UINT id = 0;

  auto operator<=>(const TrayIconKey&) const = default;
};

struct TrayIconLook {
  std::shared_ptr<const IconImages> image;  // null: none yet; nothing is shown then
  std::wstring tip;
  bool isHidden = false;
};

struct TrayBalloon {
  std::wstring text;
  std::wstring title;
  DWORD icon = 0;  // NIIF_...
  std::chrono::milliseconds duration{};
};

// Notified inside the desktop's own events.
class TrayEvents {
 public:
  virtual ~TrayEvents() = default;

  // The area has come (also: another one in its place) or gone. Every icon in it is gone.
  virtual void OnAreaChanged(bool isThere) = 0;
  // What the icon's window hears in lParam: a mouse message or NIN_...
  virtual void OnNotified(const TrayIconKey& key, UINT event) = 0;
};

class TrayBackend {
 public:
  virtual ~TrayBackend() = default;

  // Whether there is an area; called once, before all else. The events outlive the backend.
  virtual bool Open(TrayEvents& events) = 0;
  // Makes the icon when there is none of that key.
  virtual void SetIcon(const TrayIconKey& key, const TrayIconLook& look) = 0;
  virtual void RemoveIcon(const TrayIconKey& key) = 0;
  // In place of the icon's balloon before. Nothing happens without the icon or when it is hidden.
  virtual void ShowBalloon(const TrayIconKey& key, const TrayBalloon& balloon) = 0;
  virtual void HideBalloon(const TrayIconKey& key) = 0;
};

// Implemented by the desktop module.
class TraySide {
 public:
  virtual ~TraySide() = default;
  virtual TrayBackend& Tray() = 0;
};

}  // namespace platform
