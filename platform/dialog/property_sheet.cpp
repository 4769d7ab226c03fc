// Opening a property sheet, and its messages.
#include "platform/dialog/property_sheet.h"

#include <algorithm>

#include "platform/dialog/button_captions.h"
#include "platform/dialog/dialog_control.h"
#include "platform/dialog/dialog_creation.h"
#include "platform/dialog/modal_dialog.h"

namespace platform {
namespace {

constexpr int kTabsId = 0x3020;
constexpr INT_PTR kFailed = -1;
constexpr std::array kButtons = {IDOK, IDCANCEL, kApplyButton};

PropertySheet* SheetOf(HWND window) {
  return reinterpret_cast<PropertySheet*>(::GetWindowLongPtrW(window, DWLP_USER));
}

DialogItem Button(int id, bool isShown) {
  const bool isDefault = id == IDOK || id == kNextButton;
  const DWORD kind = isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
  const DWORD shown = isShown ? WS_VISIBLE : WS_DISABLED;
  DialogItem item;
  item.style = WS_CHILD | WS_TABSTOP | kind | shown;
  item.id = static_cast<DWORD>(id);
  item.className = WC_BUTTON;
  item.text = ButtonCaption(id);
  return item;
}

DialogItem Tabs() {
  DialogItem item;
  item.style = WS_CHILD | WS_TABSTOP | WS_VISIBLE;
  item.id = kTabsId;
  item.className = WC_TABCONTROL;
  return item;
}

}  // namespace

PropertySheet::PropertySheet(const PROPSHEETHEADERW& header,
                             std::vector<std::shared_ptr<PropertyPage>> pages)
    : caption_(header.pszCaption != nullptr ? header.pszCaption : L""),
      owner_(header.hwndParent),
      instance_(header.hInstance),
      hasApply_((header.dwFlags & PSH_NOAPPLYNOW) == 0),
      firstPage_(header.nStartPage < pages.size() ? header.nStartPage : 0),
      wizard_((header.dwFlags & PSH_WIZARD97) != 0 ? std::make_unique<WizardFrame>(header)
                                                   : nullptr) {
  for (auto& page : pages)
    pages_.push_back({std::move(page), {}, nullptr, false});
}

INT_PTR PropertySheet::Run() {
  if (!ReadTemplates()) return kFailed;
  DisabledOwner owner(owner_);
  const DialogOrigin origin = {instance_, owner.Get(), Procedure, reinterpret_cast<LPARAM>(this),
                               true};
  const HWND sheet = CreateDialogFrom(OwnTemplate(), origin);
  return sheet != nullptr ? AwaitEnd(sheet, owner) : kFailed;
}

bool PropertySheet::ReadTemplates() {
  for (Page& page : pages_) {
    auto made = page.page->Template();
    if (!made.has_value()) return false;
    page.made = std::move(*made);
  }
  return true;
}

// The tab control is last, so that Tab moves from a page to the buttons and from there to the tabs.
DialogTemplate PropertySheet::OwnTemplate() const {
  DialogTemplate made;
  made.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SHELLFONT;
  made.title = caption_;
  made.font = DialogFont{8, 0, false, L"MS Shell Dlg"};
  if (IsWizard()) {
    made.items = {Button(kBackButton, true), Button(kNextButton, true),
                  Button(kFinishButton, false), Button(IDCANCEL, true)};
    return made;
  }
  made.items = {Button(IDOK, true), Button(IDCANCEL, true), Button(kApplyButton, hasApply_),
                Tabs()};
  return made;
}

INT_PTR CALLBACK PropertySheet::Procedure(HWND sheet, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrW(sheet, DWLP_USER, lParam);
    SheetOf(sheet)->Build(sheet);
    return FALSE;
  }
  PropertySheet* self = SheetOf(sheet);
  return self != nullptr ? self->Answer(message, wParam, lParam) : FALSE;
}

INT_PTR PropertySheet::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      OnButton(LOWORD(wParam));
      return TRUE;
    case WM_NOTIFY:
      return OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
    case WM_CLOSE:
      Cancel(true);
      return TRUE;
    default:
      break;
  }
  const auto result = AnswerSheetMessage(message, wParam, lParam);
  if (!result.has_value()) return FALSE;
  ::SetWindowLongPtrW(sheet_, DWLP_MSGRESULT, *result);
  return TRUE;
}

std::optional<LRESULT> PropertySheet::AnswerSheetMessage(UINT message, WPARAM wParam,
                                                         LPARAM lParam) {
  switch (message) {
    case PSM_SETCURSEL:
      return TurnTo(static_cast<std::size_t>(wParam)) ? TRUE : FALSE;
    case PSM_CHANGED:
    case PSM_UNCHANGED:
      SetChanged(reinterpret_cast<HWND>(wParam), message == PSM_CHANGED);
      return 0;
    case PSM_APPLY:
      return !IsWizard() && Apply(false) ? TRUE : FALSE;
    case PSM_SETWIZBUTTONS:
      if (IsWizard()) SetWizardButtons(lParam);
      return 0;
    case PSM_PRESSBUTTON:
      Press(static_cast<int>(wParam));
      return 0;
    case PSM_GETTABCONTROL:
      return reinterpret_cast<LRESULT>(Item(kTabsId));
    case PSM_GETCURRENTPAGEHWND:
      return reinterpret_cast<LRESULT>(Current() != nullptr ? Current()->window : nullptr);
    default:
      return std::nullopt;
  }
}

INT_PTR PropertySheet::OnNotify(const NMHDR& header) {
  if (header.idFrom != kTabsId) return FALSE;
  if (header.code == TCN_SELCHANGE) {
    const LRESULT wanted = ::SendMessageW(header.hwndFrom, TCM_GETCURSEL, 0, 0);
    const auto index = static_cast<std::size_t>(wanted);
    // A page that refuses to be left keeps its tab.
    if (wanted >= 0 && !TurnTo(index) && IsOpen() && current_.has_value())
      ::SendMessageW(header.hwndFrom, TCM_SETCURSEL, *current_, 0);
  }
  return TRUE;
}

void PropertySheet::Build(HWND sheet) {
  sheet_ = sheet;
  if (IsWizard()) {
    LayOutAsWizard();
  } else {
    FindDialog(sheet).control->SetPageTurner([this](int step) { Step(step); });
    if (hasApply_) ::EnableWindow(Item(kApplyButton), FALSE);
    AddTabs();
    LayOut();
  }
  for (Page& page : pages_) {
    if (page.page->IsCreatedAtOnce() && !MakePage(page)) return;
  }
  TurnTo(firstPage_);
}

void PropertySheet::AddTabs() {
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    std::wstring title = pages_[i].page->Title().value_or(pages_[i].made.title);
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = title.data();
    ::SendMessageW(Item(kTabsId), TCM_INSERTITEMW, i, reinterpret_cast<LPARAM>(&item));
  }
}

void PropertySheet::LayOut() {
  // How far the frame of the tab control extends beyond an empty area.
  RECT margins{};
  ::SendMessageW(Item(kTabsId), TCM_ADJUSTRECT, TRUE, reinterpret_cast<LPARAM>(&margins));
  margins.left = -margins.left;
  margins.top = -margins.top;
  layout_ = LayOutSheet(LargestPage(false), margins, FindDialog(sheet_).control->Units());
  MoveTo(Item(kTabsId), layout_.tabs);
  PositionSheet(layout_.sheet);
  PositionButtons();
}

void PropertySheet::PositionSheet(SIZE size) {
  RECT ownerBounds{};
  const HWND owner = ::GetParent(sheet_);
  if (owner != nullptr) ::GetWindowRect(owner, &ownerBounds);
  MoveTo(sheet_, {ownerBounds.left, ownerBounds.top, ownerBounds.left + size.cx,
                  ownerBounds.top + size.cy});
}

// The visible buttons lie side by side at the right.
void PropertySheet::PositionButtons() {
  std::vector<HWND> shown;
  for (const int id : kButtons) {
    const auto style = static_cast<DWORD>(::GetWindowLongPtrW(Item(id), GWL_STYLE));
    if ((style & WS_VISIBLE) != 0) shown.push_back(Item(id));
  }
  const std::vector<RECT> bounds =
      LayOutButtons(shown.size(), layout_.sheet, FindDialog(sheet_).control->Units());
  for (std::size_t i = 0; i < shown.size(); ++i)
    MoveTo(shown[i], bounds[i]);
}

SIZE PropertySheet::LargestPage(bool isOuter) const {
  SIZE largest{};
  for (const Page& page : pages_) {
    if (IsOuter(page) != isOuter) continue;
    const DialogUnits units =
        UnitsOf(LogicalFontOf(page.made.font.value_or(DialogFont{8, 0, false, L"MS Shell Dlg"})));
    const RECT bounds = units.Pixels(page.made.place);
    largest.cx = std::max(largest.cx, bounds.right - bounds.left);
    largest.cy = std::max(largest.cy, bounds.bottom - bounds.top);
  }
  return largest;
}

}  // namespace platform
