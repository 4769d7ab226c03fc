#include "frame/dialog_object.h"

#include <map>
#include <vector>

#include "frame/help_system.h"
#include "frame/message_boxes.h"

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

// A dialog that could not be filled has its texts all the same, before its failure is shown.
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
    handled = object->Answer(window, message, wParam, lParam);
  } catch (...) {
    object->ShowFailure();
  }
  if (message == WM_NCDESTROY) object->Detach();
  return handled;
}

INT_PTR DialogObject::Answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kRefreshTexts:
      SetTexts(window);
      return TRUE;
    case WM_HELP:
      ShowHelp(*reinterpret_cast<const HELPINFO*>(lParam));
      return TRUE;
    default:
      return DialogProc(window, message, wParam, lParam);
  }
}

void DialogObject::ShowHelp(const HELPINFO& request) {
  if (request.dwContextId != 0) {
    ui_.help.ShowPopup(static_cast<DWORD>(request.dwContextId));
  } else if (!helpTopic_.empty()) {
    ui_.help.ShowTopic(helpTopic_);
  }
}

void DialogObject::CancelAll() {
  std::vector<std::pair<HWND, DialogObject*>> dialogs(DialogMap().begin(), DialogMap().end());
  for (const auto& [window, object] : dialogs) {
    // One that was cancelled may have ended others.
    if (ObjectOf(window) == object) object->OnCancel(window);
  }
}

void DialogObject::Detach() {
  if (window_ == nullptr) return;
  DialogMap().erase(window_);
  window_ = nullptr;
}

void DialogObject::ShowFailure() noexcept {
  // A timer or a paint that fails again and again must not cover the screen with boxes.
  if (showingFailure_) return;
  showingFailure_ = true;
  ShowCurrentException(window_, ui_.catalogue);
  showingFailure_ = false;
}

}  // namespace quillgate
