#include "platform/user/menu_tracking.h"

#include <atomic>
#include <mutex>
#include <optional>

#include "platform/gdi/lent_dc.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/kernel/seam.h"
#include "platform/user/desktop.h"
#include "platform/user/menu.h"
#include "platform/user/modal_loop.h"
#include "platform/user/window.h"

namespace platform {
namespace {

constexpr UINT kSupportedFlags = TPM_RIGHTBUTTON | TPM_CENTERALIGN | TPM_RIGHTALIGN |
                                 TPM_VCENTERALIGN | TPM_BOTTOMALIGN | TPM_NONOTIFY | TPM_RETURNCMD;

Seam<MenuTracker>& Tracker() {
  static auto& seam = *new Seam<MenuTracker>;
  return seam;
}

// Only one menu may be open at a time, in the whole process.
class OpenMenu {
 public:
  OpenMenu() : isFirst_(!isOpen_.exchange(true)) {}
  ~OpenMenu() {
    if (isFirst_) isOpen_ = false;
  }
  OpenMenu(const OpenMenu&) = delete;
  OpenMenu& operator=(const OpenMenu&) = delete;

  bool IsFirst() const { return isFirst_; }

 private:
  static inline std::atomic<bool> isOpen_ = false;
  const bool isFirst_;
};

// The owner's replies to an open menu, and the result.
class MenuSession final : public MenuEvents {
 public:
  MenuSession(HWND owner, ThreadQueue& queue) : owner_(owner), queue_(queue) {
    const std::lock_guard lock(mutex_);
    current_ = this;
  }
  ~MenuSession() override {
    const std::lock_guard lock(mutex_);
    current_ = nullptr;
  }
  MenuSession(const MenuSession&) = delete;
  MenuSession& operator=(const MenuSession&) = delete;

  // Any thread.
  static void Cancel(HWND owner) {
    const std::lock_guard lock(mutex_);
    if (current_ != nullptr && current_->owner_ == owner) current_->OnClosed(0);
  }

  SIZE Measure(const TrackedItem& item) override {
    MEASUREITEMSTRUCT measure{};
    measure.CtlType = ODT_MENU;
    measure.itemID = item.command;
    measure.itemData = item.data;
    ::SendMessageW(owner_, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&measure));
    return {static_cast<LONG>(measure.itemWidth), static_cast<LONG>(measure.itemHeight)};
  }

  void Draw(const TrackedItem& item, UINT action, UINT state, Canvas& canvas,
            const RECT& area) override {
    const LentDc context(canvas);
    DRAWITEMSTRUCT draw{};
    draw.CtlType = ODT_MENU;
    draw.itemID = item.command;
    draw.itemAction = action;
    draw.itemState = state;
    // For menus hwndItem is the menu's handle, as documented.
    draw.hwndItem = reinterpret_cast<HWND>(item.menu);
    draw.hDC = context.Get();
    draw.rcItem = area;
    draw.itemData = item.data;
    ::SendMessageW(owner_, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&draw));
  }

  void OnClosed(UINT command) override {
    queue_.Defer([result = result_, command] {
      if (!result->has_value()) *result = command;
    });
  }

  // The command, 0 when nothing was chosen or the owner is gone; nothing while the menu is open.
  std::optional<UINT> Result() const {
    return ::IsWindow(owner_) != FALSE ? *result_ : std::optional<UINT>(0u);
  }

 private:
  // The open menu, guarded by mutex_. Its owner may belong to another thread than the menu.
  static inline std::mutex mutex_;
  static inline MenuSession* current_ = nullptr;

  const HWND owner_;
  ThreadQueue& queue_;
  // Shared with deferred work, which may run when the menu has been closed.
  const std::shared_ptr<std::optional<UINT>> result_ = std::make_shared<std::optional<UINT>>();
};

UINT TrackOnDesktop(const TrackedMenu& menu) {
  ThreadQueue& queue = *CurrentQueue();
  MenuSession session(menu.owner, queue);
  const auto shown = Desktop().Menus().Show(menu, session);
  RunModalLoop(
      queue, [&] { return session.Result().has_value(); }, QuitMessage::kSwallow);
  return session.Result().value_or(0);
}

bool IsSupported(UINT flags, LPTPMPARAMS parameters) {
  const bool supported = (flags & ~kSupportedFlags) == 0 && (flags & TPM_RETURNCMD) != 0;
  if (supported && parameters == nullptr) return true;
  LogLine("TrackPopupMenuEx: unsupported flags or parameters");
  ::SetLastError(ERROR_INVALID_PARAMETER);
  return false;
}

UINT Track(const TrackedMenu& menu) {
  if (const MenuTracker tracker = Tracker().Get()) return tracker(menu);
  UINT command = 0;
  if (RunOnWindowThread([&] { command = TrackOnDesktop(menu); })) return command;
  LogLine("popup menu: there is no desktop to show it on");
  ::SetLastError(ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
  return 0;
}

}  // namespace

void SetMenuTracker(MenuTracker tracker) {
  Tracker().Set(std::move(tracker));
}

void CancelMenuOf(HWND owner) {
  MenuSession::Cancel(owner);
}

}  // namespace platform

using namespace platform;

BOOL WINAPI TrackPopupMenuEx(HMENU menu, UINT flags, int x, int y, HWND owner,
                             LPTPMPARAMS parameters) try {
  if (FindMenu(menu) == nullptr || FindWindowOf(owner) == nullptr) return 0;
  if (!IsSupported(flags, parameters)) return 0;
  const OpenMenu open;
  if (!open.IsFirst()) {
    ::SetLastError(ERROR_POPUP_ALREADY_ACTIVE);
    return 0;
  }
  return static_cast<BOOL>(Track({owner, {x, y}, flags, CopyItems(menu)}));
} catch (...) {
  return FailedCall(FALSE);
}
