#include "platform/controls/button_control.h"

#include <algorithm>
#include <array>

#include "platform/controls/control_peers.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"
#include "platform/user/window_list.h"

namespace platform {
namespace {

constexpr std::array kKinds = {BS_PUSHBUTTON,  BS_DEFPUSHBUTTON, BS_CHECKBOX,       BS_AUTOCHECKBOX,
                               BS_RADIOBUTTON, BS_GROUPBOX,      BS_AUTORADIOBUTTON};

bool IsPush(DWORD kind) {
  return kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON;
}

ButtonControl* ButtonOf(const Window& window) {
  return dynamic_cast<ButtonControl*>(window.SystemControl());
}

// The siblings in the same group, the control included: a group begins at a control with WS_GROUP
// and ends before the next such control, in order of creation.
std::vector<std::shared_ptr<Window>> GroupOf(const Window& window) {
  const auto siblings = Windows().ChildrenOf(window.Parent());
  const auto starts = [](const auto& each) { return (each->Style() & WS_GROUP) != 0; };
  const auto own = std::ranges::find(siblings, window.Handle(), &Window::Handle);
  if (own == siblings.end()) return {};
  auto first = own;
  while (first != siblings.begin() && !starts(*first))
    --first;
  return {first, std::find_if(std::next(own), siblings.end(), starts)};
}

}  // namespace

std::unique_ptr<WindowPeer> ButtonControl::MakePeer(Window& window, WindowPeer* parent) {
  ButtonPeer* sameGroup = nullptr;
  if (IsRadio() && (window.Style() & WS_GROUP) == 0) {
    for (const ButtonControl* radio : RadiosOfGroup()) {
      if (radio != this) sameGroup = radio->Peer();
    }
  }
  return DesktopSide<ControlSide>().Controls().MakeButton(Origin(parent), *this, sameGroup);
}

std::optional<LRESULT> ButtonControl::Answer(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
  switch (message) {
    case WM_NCCREATE:
      if (std::ranges::find(kKinds, Kind()) != kKinds.end()) return std::nullopt;
      LogLine("Button: this style is not supported");
      return FALSE;
    case WM_GETDLGCODE:
      return DialogCode();
    case BM_GETCHECK:
      return checked_ ? BST_CHECKED : BST_UNCHECKED;
    case BM_SETCHECK:
      SetCheck(wParam != BST_UNCHECKED);
      return 0;
    case BM_SETSTYLE:
      SetKind(LOWORD(wParam) & BS_TYPEMASK);
      return 0;
    case BM_CLICK:
      Toggle();
      if (Kind() != BS_GROUPBOX) Command(BN_CLICKED);
      return 0;
    default:
      return std::nullopt;
  }
}

void ButtonControl::OnClicked() {
  Toggle();
  CommandLater(BN_CLICKED);
}

bool ButtonControl::IsRadio() const {
  return Kind() == BS_RADIOBUTTON || Kind() == BS_AUTORADIOBUTTON;
}

bool ButtonControl::HasCheck() const {
  return IsRadio() || Kind() == BS_CHECKBOX || Kind() == BS_AUTOCHECKBOX;
}

LRESULT ButtonControl::DialogCode() const {
  switch (Kind()) {
    case BS_PUSHBUTTON:
      return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    case BS_DEFPUSHBUTTON:
      return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
      return DLGC_BUTTON | DLGC_RADIOBUTTON;
    case BS_GROUPBOX:
      return DLGC_STATIC;
    default:
      return DLGC_BUTTON;
  }
}

void ButtonControl::SetCheck(bool checked) {
  if (!HasCheck()) return;
  checked_ = checked;
  // Tab moves to the checked radio button of a group.
  if (IsRadio()) Self().SetStyleBit(WS_TABSTOP, checked);
  if (Peer() != nullptr) Peer()->SetChecked(checked);
}

void ButtonControl::SetKind(DWORD kind) {
  // The kind of widget cannot change; all push buttons are one kind.
  if (!IsPush(kind) || !IsPush(Kind())) {
    LogLine("Button: BM_SETSTYLE between push buttons only");
    return;
  }
  Self().SetStyle((Self().Style() & ~BS_TYPEMASK) | kind);
  if (Peer() != nullptr) Peer()->SetDefault(kind == BS_DEFPUSHBUTTON);
}

void ButtonControl::Toggle() {
  if (Kind() == BS_AUTOCHECKBOX) SetCheck(!checked_);
  if (Kind() != BS_AUTORADIOBUTTON) return;
  for (ButtonControl* radio : RadiosOfGroup()) {
    if (radio->Kind() == BS_AUTORADIOBUTTON) radio->SetCheck(radio == this);
  }
}

std::vector<ButtonControl*> ButtonControl::RadiosOfGroup() const {
  std::vector<ButtonControl*> radios;
  for (const auto& window : GroupOf(Self())) {
    ButtonControl* button = ButtonOf(*window);
    if (button != nullptr && button->IsRadio()) radios.push_back(button);
  }
  return radios;
}

}  // namespace platform
