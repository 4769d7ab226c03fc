#include "platform/shell/notification_area.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <mutex>
#include <string>
#include <vector>

#include "platform/gdi/gdi_objects.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/shell/desktop_tray.h"

namespace platform {
namespace {

constexpr UINT kSupportedFields = NIF_MESSAGE | NIF_ICON | NIF_TIP | NIF_STATE | NIF_INFO;
// The documented limits of the time that a balloon is shown.
constexpr std::chrono::milliseconds kShortestBalloon{10'000};
constexpr std::chrono::milliseconds kLongestBalloon{30'000};

struct Icon {
  NOTIFYICONDATAW data{};
  // The image at the time of the call; the icon's handle may have been destroyed since.
  std::shared_ptr<const IconImages> image;
};

struct Area {
  std::mutex mutex;
  std::vector<Icon> icons;
  // Called in place of a desktop's area.
  NotificationObserver observer;
};

Area& CurrentArea() {
  static Area& area = *new Area;
  return area;
}

auto Locate(std::vector<Icon>& icons, HWND window, UINT id) {
  return std::ranges::find_if(
      icons, [&](const Icon& each) { return each.data.hWnd == window && each.data.uID == id; });
}

template <std::size_t Size>
void Terminate(WCHAR (&text)[Size]) {
  text[Size - 1] = L'\0';
}

// The caller's structure, extended to its full size and with its texts terminated.
NOTIFYICONDATAW Normalised(const NOTIFYICONDATAW& data) {
  NOTIFYICONDATAW copy{};
  std::memcpy(&copy, &data, data.cbSize);
  Terminate(copy.szTip);
  Terminate(copy.szInfo);
  Terminate(copy.szInfoTitle);
  return copy;
}

// Copies the members that the flags of the change select.
void Apply(Icon& icon, const NOTIFYICONDATAW& change) {
  NOTIFYICONDATAW& data = icon.data;
  data.uFlags |= change.uFlags;
  if ((change.uFlags & NIF_MESSAGE) != 0) data.uCallbackMessage = change.uCallbackMessage;
  if ((change.uFlags & NIF_ICON) != 0) {
    data.hIcon = change.hIcon;
    icon.image = IconOf(change.hIcon);
  }
  if ((change.uFlags & NIF_TIP) != 0) std::ranges::copy(change.szTip, data.szTip);
  if ((change.uFlags & NIF_STATE) != 0) {
    data.dwState = (data.dwState & ~change.dwStateMask) | (change.dwState & change.dwStateMask);
    data.dwStateMask |= change.dwStateMask;
  }
  if ((change.uFlags & NIF_INFO) != 0) {
    std::ranges::copy(change.szInfo, data.szInfo);
    std::ranges::copy(change.szInfoTitle, data.szInfoTitle);
    data.uTimeout = change.uTimeout;
    data.dwInfoFlags = change.dwInfoFlags;
  }
}

TrayBalloon BalloonOf(const NOTIFYICONDATAW& change) {
  const std::chrono::milliseconds wanted(change.uTimeout);
  return {change.szInfo, change.szInfoTitle, change.dwInfoFlags,
          std::clamp(wanted, kShortestBalloon, kLongestBalloon)};
}

void ShowOnDesktop(const Icon& icon, const NOTIFYICONDATAW& change) {
  const TrayIconKey key{change.hWnd, change.uID};
  const bool isHidden = (icon.data.dwState & NIS_HIDDEN) != 0;
  WithDesktopTray([key, look = TrayIconLook{icon.image, icon.data.szTip, isHidden}](
                      TrayBackend& tray) { tray.SetIcon(key, look); });
  if ((change.uFlags & NIF_INFO) == 0) return;
  if (change.szInfo[0] == L'\0') {
    WithDesktopTray([key](TrayBackend& tray) { tray.HideBalloon(key); });
  } else {
    WithDesktopTray(
        [key, balloon = BalloonOf(change)](TrayBackend& tray) { tray.ShowBalloon(key, balloon); });
  }
}

void RemoveFromDesktop(const NOTIFYICONDATAW& data) {
  WithDesktopTray(
      [key = TrayIconKey{data.hWnd, data.uID}](TrayBackend& tray) { tray.RemoveIcon(key); });
}

DWORD Add(std::vector<Icon>& icons, const NOTIFYICONDATAW& change) {
  if (!::IsWindow(change.hWnd)) return ERROR_INVALID_WINDOW_HANDLE;
  if (Locate(icons, change.hWnd, change.uID) != icons.end()) return ERROR_ALREADY_EXISTS;
  Icon icon;
  icon.data.cbSize = sizeof icon.data;
  icon.data.hWnd = change.hWnd;
  icon.data.uID = change.uID;
  icons.push_back(icon);
  return NO_ERROR;
}

// The caller holds the lock of the area, so that the desktop is notified of changes in order.
DWORD Change(Area& area, bool onDesktop, DWORD message, const NOTIFYICONDATAW& change) {
  if (message == NIM_ADD) {
    if (const DWORD error = Add(area.icons, change); error != NO_ERROR) return error;
  }
  const auto found = Locate(area.icons, change.hWnd, change.uID);
  if (found == area.icons.end()) return ERROR_FILE_NOT_FOUND;
  if (message == NIM_DELETE) {
    if (onDesktop) RemoveFromDesktop(found->data);
    area.icons.erase(found);
    return NO_ERROR;
  }
  Apply(*found, change);
  if (onDesktop) ShowOnDesktop(*found, change);
  return NO_ERROR;
}

bool IsSupported(DWORD message, const NOTIFYICONDATAW& change) {
  if (message == NIM_DELETE) return true;
  const bool supportedMessage = message == NIM_ADD || message == NIM_MODIFY;
  const bool supportedState =
      (change.uFlags & NIF_STATE) == 0 || (change.dwStateMask & ~NIS_HIDDEN) == 0;
  const bool supported =
      supportedMessage && supportedState && (change.uFlags & ~kSupportedFields) == 0;
  if (!supported) LogLine("Shell_NotifyIconW: unsupported message, flag or state");
  return supported;
}

// Logs a balloon that is not shown.
void LogBalloon(DWORD message, const NOTIFYICONDATAW& change) {
  const bool isBalloon = message != NIM_DELETE && (change.uFlags & NIF_INFO) != 0;
  if (!isBalloon || change.szInfo[0] == L'\0') return;
  LogLine("balloon: " + Utf8(change.szInfoTitle) + ": " + Utf8(change.szInfo));
}

// Where a change is shown.
struct Receivers {
  NotificationObserver observer;
  TrayPresence desktop = TrayPresence::kNoDesktop;
};

Receivers CurrentReceivers() {
  Area& area = CurrentArea();
  Receivers receivers;
  {
    const std::lock_guard lock(area.mutex);
    receivers.observer = area.observer;
  }
  if (!receivers.observer) receivers.desktop = DesktopTrayPresence();
  return receivers;
}

DWORD ApplyAndReport(DWORD message, const NOTIFYICONDATAW& change) {
  const Receivers receivers = CurrentReceivers();
  if (receivers.desktop == TrayPresence::kNoArea && message == NIM_ADD) {
    LogBalloon(message, change);
    return ERROR_FILE_NOT_FOUND;
  }
  const bool onDesktop = receivers.desktop == TrayPresence::kArea;
  {
    Area& area = CurrentArea();
    const std::lock_guard lock(area.mutex);
    const DWORD error = Change(area, onDesktop, message, change);
    if (error != NO_ERROR) return error;
  }
  if (!onDesktop) LogBalloon(message, change);
  if (receivers.observer) receivers.observer(message, change);
  return NO_ERROR;
}

}  // namespace

std::optional<NOTIFYICONDATAW> NotificationIcon(HWND window, UINT id) {
  Area& area = CurrentArea();
  const std::lock_guard lock(area.mutex);
  const auto found = Locate(area.icons, window, id);
  if (found == area.icons.end()) return std::nullopt;
  return found->data;
}

void SetNotificationObserver(NotificationObserver observer) {
  Area& area = CurrentArea();
  const std::lock_guard lock(area.mutex);
  area.observer = std::move(observer);
}

void ClearNotificationArea() {
  Area& area = CurrentArea();
  const std::lock_guard lock(area.mutex);
  area.icons.clear();
}

void ForgetNotificationIconsOf(HWND window) {
  Area& area = CurrentArea();
  const std::lock_guard lock(area.mutex);
  std::erase_if(area.icons, [&](const Icon& each) {
    if (each.data.hWnd != window) return false;
    RemoveFromDesktop(each.data);
    return true;
  });
}

}  // namespace platform

using namespace platform;

BOOL WINAPI Shell_NotifyIconW(DWORD message, PNOTIFYICONDATAW data) try {
  const bool hasSupportedSize = data != nullptr && (data->cbSize == sizeof(NOTIFYICONDATAW) ||
                                                    data->cbSize == NOTIFYICONDATAW_V2_SIZE);
  if (!hasSupportedSize) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const NOTIFYICONDATAW change = Normalised(*data);
  const DWORD error =
      IsSupported(message, change) ? ApplyAndReport(message, change) : ERROR_INVALID_PARAMETER;
  if (error != NO_ERROR) ::SetLastError(error);
  return error == NO_ERROR ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}
