#include "platform/shell/notification_area.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <mutex>
#include <string>
#include <vector>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr UINT kSupportedFields = NIF_MESSAGE | NIF_ICON | NIF_TIP | NIF_STATE | NIF_INFO;
// The structure as it was before the members for an icon's GUID.
constexpr DWORD kShorterSize = offsetof(NOTIFYICONDATAW, guidItem);

struct Area {
  std::mutex mutex;
  std::vector<NOTIFYICONDATAW> icons;
  NotificationObserver observer;
};

Area& TheArea() {
  static Area& area = *new Area;
  return area;
}

auto Locate(std::vector<NOTIFYICONDATAW>& icons, HWND window, UINT id) {
  return std::ranges::find_if(
      icons, [&](const NOTIFYICONDATAW& each) { return each.hWnd == window && each.uID == id; });
}

// Icons go with their windows.
void ForgetOrphans(std::vector<NOTIFYICONDATAW>& icons) {
  std::erase_if(icons, [](const NOTIFYICONDATAW& each) { return !::IsWindow(each.hWnd); });
}

template <std::size_t Size>
void Terminate(WCHAR (&text)[Size]) {
  text[Size - 1] = L'\0';
}

// The caller's structure in full size and with its texts ended.
NOTIFYICONDATAW Normalised(const NOTIFYICONDATAW& data) {
  NOTIFYICONDATAW copy{};
  std::memcpy(&copy, &data, data.cbSize);
  Terminate(copy.szTip);
  Terminate(copy.szInfo);
  Terminate(copy.szInfoTitle);
  return copy;
}

// Takes over the members that the change says to count.
void Apply(NOTIFYICONDATAW& icon, const NOTIFYICONDATAW& change) {
  icon.uFlags |= change.uFlags;
  if ((change.uFlags & NIF_MESSAGE) != 0) icon.uCallbackMessage = change.uCallbackMessage;
  if ((change.uFlags & NIF_ICON) != 0) icon.hIcon = change.hIcon;
  if ((change.uFlags & NIF_TIP) != 0) std::ranges::copy(change.szTip, icon.szTip);
  if ((change.uFlags & NIF_STATE) != 0) {
    icon.dwState = (icon.dwState & ~change.dwStateMask) | (change.dwState & change.dwStateMask);
    icon.dwStateMask |= change.dwStateMask;
  }
  if ((change.uFlags & NIF_INFO) != 0) {
    std::ranges::copy(change.szInfo, icon.szInfo);
    std::ranges::copy(change.szInfoTitle, icon.szInfoTitle);
    icon.uTimeout = change.uTimeout;
    icon.dwInfoFlags = change.dwInfoFlags;
  }
}

DWORD Add(std::vector<NOTIFYICONDATAW>& icons, const NOTIFYICONDATAW& change) {
  if (!::IsWindow(change.hWnd)) return ERROR_INVALID_WINDOW_HANDLE;
  if (Locate(icons, change.hWnd, change.uID) != icons.end()) return ERROR_ALREADY_EXISTS;
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof icon;
  icon.hWnd = change.hWnd;
  icon.uID = change.uID;
  Apply(icon, change);
  icons.push_back(icon);
  return NO_ERROR;
}

DWORD Modify(std::vector<NOTIFYICONDATAW>& icons, const NOTIFYICONDATAW& change) {
  const auto found = Locate(icons, change.hWnd, change.uID);
  if (found == icons.end()) return ERROR_FILE_NOT_FOUND;
  Apply(*found, change);
  return NO_ERROR;
}

DWORD Delete(std::vector<NOTIFYICONDATAW>& icons, const NOTIFYICONDATAW& change) {
  const auto found = Locate(icons, change.hWnd, change.uID);
  if (found == icons.end()) return ERROR_FILE_NOT_FOUND;
  icons.erase(found);
  return NO_ERROR;
}

DWORD Change(DWORD message, const NOTIFYICONDATAW& change) {
  Area& area = TheArea();
  const std::lock_guard lock(area.mutex);
  ForgetOrphans(area.icons);
  if (message == NIM_ADD) return Add(area.icons, change);
  if (message == NIM_MODIFY) return Modify(area.icons, change);
  return Delete(area.icons, change);
}

bool IsSupported(DWORD message, const NOTIFYICONDATAW& change) {
  if (message == NIM_DELETE) return true;
  const bool knownMessage = message == NIM_ADD || message == NIM_MODIFY;
  const bool knownState =
      (change.uFlags & NIF_STATE) == 0 || (change.dwStateMask & ~NIS_HIDDEN) == 0;
  const bool supported = knownMessage && knownState && (change.uFlags & ~kSupportedFields) == 0;
  if (!supported) LogLine("Shell_NotifyIconW: unsupported message, flag or state");
  return supported;
}

// Nobody sees a balloon here, so it is put on record.
void LogBalloon(DWORD message, const NOTIFYICONDATAW& change) {
  const bool isBalloon = message != NIM_DELETE && (change.uFlags & NIF_INFO) != 0;
  if (!isBalloon || change.szInfo[0] == L'\0') return;
  LogLine("balloon: " + Utf8(change.szInfoTitle) + ": " + Utf8(change.szInfo));
}

void TellObserver(DWORD message, const NOTIFYICONDATAW& change) {
  Area& area = TheArea();
  NotificationObserver observer;
  {
    const std::lock_guard lock(area.mutex);
    observer = area.observer;
  }
  if (observer) observer(message, change);
}

}  // namespace

std::optional<NOTIFYICONDATAW> NotificationIcon(HWND window, UINT id) {
  Area& area = TheArea();
  const std::lock_guard lock(area.mutex);
  ForgetOrphans(area.icons);
  const auto found = Locate(area.icons, window, id);
  if (found == area.icons.end()) return std::nullopt;
  return *found;
}

void SetNotificationObserver(NotificationObserver observer) {
  Area& area = TheArea();
  const std::lock_guard lock(area.mutex);
  area.observer = std::move(observer);
}

void ClearNotificationArea() {
  Area& area = TheArea();
  const std::lock_guard lock(area.mutex);
  area.icons.clear();
}

}  // namespace platform

using namespace platform;

BOOL WINAPI Shell_NotifyIconW(DWORD message, PNOTIFYICONDATAW data) {
  const bool sized =
      data != nullptr && (data->cbSize == sizeof(NOTIFYICONDATAW) || data->cbSize == kShorterSize);
  if (!sized) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const NOTIFYICONDATAW change = Normalised(*data);
  if (!IsSupported(message, change)) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const DWORD error = Change(message, change);
  if (error != NO_ERROR) {
    ::SetLastError(error);
    return FALSE;
  }
  LogBalloon(message, change);
  TellObserver(message, change);
  return TRUE;
}
