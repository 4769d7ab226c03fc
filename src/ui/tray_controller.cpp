#include "ui/tray_controller.h"

#include "resources/resource.h"
#include "ui/owner_draw_menu.h"

namespace quillgate {
namespace {

constexpr WORD kMenuIcons[] = {IDI_MENU_SETTINGS, IDI_MENU_EXIT,   IDI_MENU_STATISTICS,
                               IDI_MENU_HELP,     IDI_MENU_LOG_ON, IDI_MENU_CONNECTION,
                               IDI_MENU_OVERRIDE};

}  // namespace

TrayController::TrayController(const TraySurroundings& surroundings)
    : commands_(surroundings, *this), stop_(surroundings.stop) {
  for (const WORD number : kMenuIcons)
    menuIcons_.emplace(number, LoadSmallIcon(number));
  SetTip(surroundings.catalogue.GetMessageText(kMsgProductName));
}

void TrayController::SetIcon(GateIcon icon) {
  SetIconHandle(LoadSmallIcon(static_cast<WORD>(icon)));
}

void TrayController::SetTip(const std::wstring& text) {
  SetTipText(text);
}

void TrayController::Show() {
  ShowIcon();
}

void TrayController::ShowMessage(const std::wstring& text, const std::wstring& title,
                                 BalloonIcon icon, int kind) {
  lastKind_ = kind;
  ShowBalloon(text, title, static_cast<DWORD>(icon));
}

bool TrayController::Lock() {
  return busy_.exchange(true);
}

void TrayController::Unlock() {
  busy_ = false;
}

void TrayController::OnButtonUp(MouseButton button) {
  if (button != MouseButton::kRight || busy_) return;
  const IndicatorLock busy(*this);
  commands_.Perform(BuildAndTrackMenu());
}

void TrayController::OnDoubleClick() {
  if (busy_) return;
  const IndicatorLock busy(*this);
  commands_.PerformDoubleClick();
}

int TrayController::BuildAndTrackMenu() {
  const TrayMenu menu = BuildTrayMenu(commands_.State());
  OwnerDrawMenu popup;
  Fill(popup, menu.items);
  popup.SetDefault(static_cast<WORD>(menu.defaultCommand));
  return popup.Track(stop_);
}

void TrayController::Fill(OwnerDrawMenu& popup, const std::vector<TrayMenuItem>& items) const {
  for (const TrayMenuItem& item : items) {
    if (item.text == 0) {
      popup.AppendSeparator();
      continue;
    }
    OwnerDrawMenu submenu;
    Fill(submenu, item.submenu);
    const auto icon = menuIcons_.find(item.icon);
    popup.Append(commands_.Catalogue().GetMessageText(item.text), static_cast<WORD>(item.command),
                 icon == menuIcons_.end() ? nullptr : icon->second.Get(), submenu);
  }
}

}  // namespace quillgate
