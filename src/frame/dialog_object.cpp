#include "frame/dialog_object.h"

#include <map>
#include <vector>

#include "frame/help_system.h"
#include "frame/message_boxes.h"
#include "frame/number_field.h"

namespace quillgate {
namespace {

std::map<HWND, DialogObject*>& DialogMap() {
  static std::map<HWND, DialogObject*> map;
  return map;
}

DialogObject* ObjectOf(HWND window) {
  const auto found = DialogMap().find(window);
  return found == DialogMap().end() ? nullptr : found->second;
}

// A copy, because a handler that is called for one dialog may open or close others.
std::vector<std::pair<HWND, DialogObject*>> OpenDialogs() {
  return {DialogMap().begin(), DialogMap().end()};
}

}  // namespace

DialogObject::DialogObject(const UiSurroundings& ui, std::wstring helpTopic)
    : ui_(ui), helpTopic_(std::move(helpTopic)) {}

DialogObject::~DialogObject() {
  Detach();
}

bool DialogObject::OnApply(HWND) {
  return true;
}

void DialogObject::OnCancel(HWND) {}

bool DialogObject::OnCommand(int, int) {
  return false;
}

bool DialogObject::OnNotify(const NMHDR&) {
  return false;
}

INT_PTR DialogObject::DialogProc(HWND, UINT, WPARAM, LPARAM) {
  return FALSE;
}

bool DialogObject::OnInitDialog(HWND) {
  return true;
}

void DialogObject::SetTexts(HWND) {}

INT_PTR DialogObject::RunModal(UINT templateNumber, HWND parent) {
  if (IsStopping()) return IDCANCEL;
  const INT_PTR result =
      ::DialogBoxParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(templateNumber), parent,
                        StaticProc, reinterpret_cast<LPARAM>(this));
  return IsStopping() ? IDCANCEL : result;
}

INT_PTR CALLBACK DialogObject::StaticProc(HWND window, UINT message, WPARAM wParam,
                                          LPARAM lParam) noexcept {
  if (message == WM_INITDIALOG) return reinterpret_cast<DialogObject*>(lParam)->Begin(window);
  return Route(window, message, wParam, lParam);
}

INT_PTR DialogObject::Begin(HWND window) noexcept {
  try {
    DialogMap()[window] = this;
    window_ = window;
    const bool systemChoosesFocus = InitOrShowFailure(window);
    SetTexts(window);
    return systemChoosesFocus ? TRUE : FALSE;
  } catch (...) {
    ShowFailure();
    return TRUE;
  }
}

// If OnInitDialog throws, the texts are set all the same before the failure is shown.
bool DialogObject::InitOrShowFailure(HWND window) {
  try {
    return OnInitDialog(window);
  } catch (...) {
    SetTexts(window);
    ShowFailure();
    return true;
  }
}

INT_PTR DialogObject::Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
  DialogObject* object = ObjectOf(window);
  if (object == nullptr) return FALSE;
  INT_PTR handled = FALSE;
  try {
    handled = object->Dispatch(window, message, wParam, lParam);
  } catch (...) {
    object->ShowFailure();
  }
  if (message == WM_NCDESTROY) object->Detach();
  return handled;
}

INT_PTR DialogObject::Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kRefreshTexts:
      RefreshTexts();
      return TRUE;
    case WM_HELP:
      ShowHelp(*reinterpret_cast<const HELPINFO*>(lParam));
      return TRUE;
    case WM_COMMAND:
      if (OnCommand(LOWORD(wParam), HIWORD(wParam))) return TRUE;
      break;
    case WM_NOTIFY:
      if (AnswerNotification(*reinterpret_cast<const NMHDR*>(lParam))) return TRUE;
      break;
    default:
      break;
  }
  return DialogProc(window, message, wParam, lParam);
}

void DialogObject::ShowHelp(const HELPINFO& request) {
  if (request.dwContextId != 0) {
    ui_.help.ShowPopup(static_cast<DWORD>(request.dwContextId));
  } else if (!helpTopic_.empty()) {
    ui_.help.ShowTopic(helpTopic_);
  }
}

void DialogObject::ShowTexts(std::span<const ControlText> texts) const {
  for (const ControlText& text : texts)
    Control(window_, text.control).SetText(Catalogue().GetMessageText(text.message));
}

void DialogObject::ShowCaption(MessageId message) const {
  ::SetWindowTextW(window_, Catalogue().GetMessageText(message).c_str());
}

bool DialogObject::EndBy(int control) const {
  if (control != IDOK && control != IDCANCEL) return false;
  End(control);
  return true;
}

void DialogObject::ShowMessageBox(MessageId message, UINT icon) const {
  ShowText(window_, Catalogue(), Catalogue().GetMessageText(message), icon);
}

bool DialogObject::Ask(MessageId message, MessageId caption) const {
  const std::wstring question = Catalogue().GetMessageText(message);
  return AskYesNo(window_, Catalogue(), question, caption) && !IsStopping();
}

void DialogObject::RefuseEntry(int field, const std::wstring& reason) const {
  ShowText(window_, Catalogue(), reason, MB_ICONEXCLAMATION);
  const Edit edit(window_, field);
  edit.SelectAll();
  edit.Focus();
}

std::optional<std::uint32_t> DialogObject::ReadNumber(int field, const NumberRange& range) const {
  const std::uint32_t number = NumberField(window_, field).Number();
  if (range.Contains(number)) return number;
  RefuseEntry(field,
              Catalogue().GetMessageText(kMsgValueOutOfRange, number, range.lowest, range.highest));
  return {};
}

void DialogObject::CancelAll() {
  for (const auto& [window, object] : OpenDialogs()) {
    // OnCancel of an earlier object may have closed this dialog.
    if (ObjectOf(window) == object) object->OnCancel(window);
  }
}

void DialogObject::RefreshAllTexts() {
  for (const auto& [window, object] : OpenDialogs())
    ::SendMessageW(window, kRefreshTexts, 0, 0);
}

void DialogObject::Detach() {
  if (window_ == nullptr) return;
  DialogMap().erase(window_);
  window_ = nullptr;
}

void DialogObject::ShowFailure() noexcept {
  // A timer or WM_PAINT handler that fails again and again must not cover the screen with message
  // boxes.
  if (showingFailure_) return;
  showingFailure_ = true;
  ShowCurrentException(window_, ui_.catalogue);
  showingFailure_ = false;
}

}  // namespace quillgate
