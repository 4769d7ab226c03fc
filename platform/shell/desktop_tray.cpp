#include "platform/shell/desktop_tray.h"

#include <shellapi.h>

#include "platform/kernel/log.h"
#include "platform/shell/notification_area.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

class DesktopTray final : public TrayEvents {
 public:
  TrayPresence Presence();
  void Run(std::function<void(TrayBackend&)> work);

  void OnAreaChanged(bool isThere) override;
  void OnNotified(const TrayIconKey& key, UINT event) override;

 private:
  bool IsNewThread(const std::shared_ptr<ThreadQueue>& windowThread);
  void Open(const std::shared_ptr<ThreadQueue>& windowThread);
  void SetThere(bool isThere);

  std::mutex mutex_;
  // The window thread whose area is recorded here.
  std::weak_ptr<ThreadQueue> windowThread_;
  bool isThere_ = false;
  // Numbers the areas, so that work for one area does not run on the next.
  unsigned area_ = 0;
};

DesktopTray& Tray() {
  static DesktopTray& tray = *new DesktopTray;
  return tray;
}

TrayPresence DesktopTray::Presence() {
  const auto windowThread = WindowThread();
  if (windowThread == nullptr) return TrayPresence::kNoDesktop;
  if (IsNewThread(windowThread)) Open(windowThread);
  const std::lock_guard lock(mutex_);
  return isThere_ ? TrayPresence::kArea : TrayPresence::kNoArea;
}

bool DesktopTray::IsNewThread(const std::shared_ptr<ThreadQueue>& windowThread) {
  const std::lock_guard lock(mutex_);
  if (windowThread_.lock() == windowThread) return false;
  windowThread_ = windowThread;
  isThere_ = true;
  ++area_;
  return true;
}

void DesktopTray::Open(const std::shared_ptr<ThreadQueue>& windowThread) {
  const auto open = [this] {
    if (!IsWindowThread() || DesktopSide<TraySide>().Tray().Open(*this)) return;
    LogLine("desktop: there is no notification area yet");
    SetThere(false);
  };
  if (windowThread == CurrentQueue()) {
    open();
  } else {
    windowThread->Defer(open);
  }
}

void DesktopTray::SetThere(bool isThere) {
  {
    const std::lock_guard lock(mutex_);
    isThere_ = isThere;
    ++area_;
  }
  ClearNotificationArea();
}

void DesktopTray::Run(std::function<void(TrayBackend&)> work) {
  std::unique_lock lock(mutex_);
  const auto windowThread = windowThread_.lock();
  if (windowThread == nullptr) return;
  windowThread->Defer([this, area = area_, work = std::move(work)] {
    // The thread may have left the desktop meanwhile.
    if (!IsWindowThread()) return;
    {
      const std::lock_guard inside(mutex_);
      if (area != area_) return;
    }
    work(DesktopSide<TraySide>().Tray());
  });
}

void DesktopTray::OnAreaChanged(bool isThere) {
  LogLine(isThere ? "desktop: the notification area has come"
                  : "desktop: the notification area has gone");
  SetThere(isThere);
  if (!isThere) return;
  // Programs add their icons again when they receive this message.
  CurrentQueue()->Defer(
      [] { ::PostMessageW(HWND_BROADCAST, ::RegisterWindowMessageW(L"TaskbarCreated"), 0, 0); });
}

void DesktopTray::OnNotified(const TrayIconKey& key, UINT event) {
  const auto icon = NotificationIcon(key.window, key.id);
  if (!icon.has_value() || (icon->uFlags & NIF_MESSAGE) == 0) return;
  ::PostMessageW(key.window, icon->uCallbackMessage, key.id, static_cast<LPARAM>(event));
}

}  // namespace

TrayPresence DesktopTrayPresence() {
  return Tray().Presence();
}

void WithDesktopTray(std::function<void(TrayBackend&)> work) {
  Tray().Run(std::move(work));
}

}  // namespace platform
