// The desktop's side of the notification area. For the window thread.
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
  std::shared_ptr<const IconImages> image;  // null: no icon yet, so nothing is shown
  std::wstring tip;
  bool isHidden = false;
};

struct TrayBalloon {
  std::wstring text;
  std::wstring title;
  DWORD icon = 0;  // NIIF_...
  std::chrono::milliseconds duration{};
};

// Called inside events of the desktop.
class TrayEvents {
 public:
  virtual ~TrayEvents() = default;

  // The area has appeared, been replaced or been removed. It contains no icons of this process
  // then.
  virtual void OnAreaChanged(bool isThere) = 0;
  // An event for the window of the icon, as in lParam: a mouse message or NIN_...
  virtual void OnNotified(const TrayIconKey& key, UINT event) = 0;
};

class TrayBackend {
 public:
  virtual ~TrayBackend() = default;

  // Connects the events, which must outlive the backend; true when there is an area. Called once,
  // before any other function.
  virtual bool Open(TrayEvents& events) = 0;
  // Changes the icon, or creates it when there is none with that key.
  virtual void SetIcon(const TrayIconKey& key, const TrayIconLook& look) = 0;
  virtual void RemoveIcon(const TrayIconKey& key) = 0;
  // Replaces the balloon that the icon shows. Ignored when there is no such icon or it is hidden.
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
