#include "ui/logon_dialog.h"

#include <optional>

#include "frame/combo_box.h"
#include "frame/help_topics.h"
#include "resources/resource.h"
#include "ui/secret_text.h"

namespace quillgate {
namespace {

constexpr UINT_PTR kBannerTimer = 1;
constexpr UINT kBannerTimerMilliseconds = 1500;
constexpr UINT_PTR kPauseTimer = 2;
// Pixels by which the password row of the template moves: up to the position of the user row for
// the override password, else down below the user row. Its label also moves to the right.
constexpr int kRowUp = 16;
constexpr int kRowDown = 15;
constexpr int kLabelRight = 5;

}  // namespace

LogonDialog::LogonDialog(const LogonDialogSurroundings& surroundings, LogonSystem system,
                         const LogonCandidates& candidates)
    : DialogObject(surroundings.ui, kTopicLogon),
      settings_(surroundings.settings),
      system_(system),
      candidates_(candidates),
      bannerTimerUsed_(surroundings.bannerTimerUsed),
      pause_(surroundings.passwordPause),
      banner_(surroundings.gdiPlus) {}

bool LogonDialog::Run(HWND parent) {
  return RunModal(IDD_LOGON, parent) == IDOK;
}

bool LogonDialog::OnInitDialog(HWND window) {
  Edit(window, IDC_LOGON_PASSWORD).LimitLength(SecretText::kMaximumLength);
  PositionPasswordRow(window);
  const bool isUserKnown = !IsOverride() && ListUsers(window);
  if (PauseLeft() > 0) {
    AdmitPassword(window);
    return false;
  }
  if (isUserKnown) Edit(window, IDC_LOGON_PASSWORD).Focus();
  return !isUserKnown;
}

void LogonDialog::PositionPasswordRow(HWND window) const {
  Control(window, IDC_LOGON_USER).Show(!IsOverride());
  Control(window, IDC_LOGON_USER_LABEL).Show(!IsOverride());
  const int down = IsOverride() ? -kRowUp : kRowDown;
  Control(window, IDC_LOGON_PASSWORD).MoveBy(0, down);
  Control(window, IDC_LOGON_PASSWORD_LABEL).MoveBy(kLabelRight, down);
}

bool LogonDialog::ListUsers(HWND window) const {
  const ComboBox users(window, IDC_LOGON_USER);
  const std::wstring last = settings_.GetSetting(SettingKey::kLastLogonName, L"");
  std::optional<int> lastIndex;
  for (const std::wstring& name : candidates_.Names()) {
    const int index = users.Add(name);
    if (name == last) lastIndex = index;
  }
  users.Select(lastIndex.value_or(0));
  return lastIndex.has_value();
}

void LogonDialog::SetTexts(HWND window) {
  const MessageCatalogue& texts = Catalogue();
  const ControlText controls[] = {
      {IDOK, kMsgOk},
      {IDCANCEL, kMsgCancel},
      {IDC_LOGON_USER_LABEL, kMsgUserNameLabel},
      {IDC_LOGON_EXPLANATION, IsOverride() ? kMsgEnterOverridePassword : kMsgNeedToLogOn},
  };
  ShowCaption(kMsgLogOnCaption);
  ShowTexts(controls);
  Control(window, IDC_LOGON_PASSWORD_LABEL).SetText(texts.GetMessageText(kMsgPasswordLabel) + L":");
  if (IsOverride()) {
    const ComboBox users(window, IDC_LOGON_USER);
    users.Clear();
    users.Select(users.Add(texts.GetMessageText(kMsgOverride)));
  }
}

INT_PTR LogonDialog::DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
    case WM_PAINT:
      OnPaint(window);
      return TRUE;
    case WM_TIMER:
      OnTimer(window, wParam);
      return TRUE;
    default:
      return FALSE;
  }
}

void LogonDialog::OnTimer(HWND window, UINT_PTR timer) const {
  if (timer == kPauseTimer) return AdmitPassword(window);
  const RECT banner{0, 0, LogonBanner::kWidth, LogonBanner::kHeight};
  ::InvalidateRect(window, &banner, FALSE);
}

bool LogonDialog::OnCommand(int control, int) {
  switch (control) {
    case IDOK:
      OnOk(Window());
      return true;
    case IDCANCEL:
      Close(Window(), IDCANCEL);
      return true;
    default:
      return false;
  }
}

std::wstring LogonDialog::ChosenName(HWND window) const {
  if (IsOverride()) return std::wstring(kOverrideUserName);
  return ComboBox(window, IDC_LOGON_USER).SelectedText();
}

void LogonDialog::OnOk(HWND window) {
  if (PauseLeft() > 0) return;
  std::wstring name = ChosenName(window);
  const SecretText password(Edit(window, IDC_LOGON_PASSWORD));
  if (!candidates_.Accepts(name, password.View())) {
    OnWrongPassword(window);
    return;
  }
  pause_.NoteRight();
  settings_.SetSetting(SettingKey::kLastLogonName, name);
  userName_ = std::move(name);
  Close(window, IDOK);
}

void LogonDialog::OnWrongPassword(HWND window) {
  ShowMessageBox(kMsgWrongPassword, MB_ICONERROR);
  pause_.NoteWrong(::GetTickCount());
  if (--attemptsLeft_ == 0) {
    Close(window, IDCANCEL);
    return;
  }
  AdmitPassword(window);
}

void LogonDialog::AdmitPassword(HWND window) const {
  const Edit password(window, IDC_LOGON_PASSWORD);
  const DWORD left = PauseLeft();
  password.Enable(left == 0);
  Control(window, IDOK).Enable(left == 0);
  if (left > 0) {
    // The dialog itself takes the focus. If Cancel had it, a user who goes on typing would close
    // the dialog with Enter.
    ::SetFocus(window);
    ::SetTimer(window, kPauseTimer, left, nullptr);
    return;
  }
  ::KillTimer(window, kPauseTimer);
  password.SelectAll();
  password.Focus();
}

void LogonDialog::Close(HWND window, int result) {
  ::KillTimer(window, kBannerTimer);
  ::KillTimer(window, kPauseTimer);
  End(result);
}

void LogonDialog::OnPaint(HWND window) {
  RECT client{};
  ::GetClientRect(window, &client);
  PAINTSTRUCT paint{};
  const HDC context = ::BeginPaint(window, &paint);
  banner_.Paint(context, client.right, Catalogue().GetMessageText(kMsgLogOn));
  ::EndPaint(window, &paint);
  if (bannerTimerUsed_) return;
  bannerTimerUsed_ = true;
  ::SetTimer(window, kBannerTimer, kBannerTimerMilliseconds, nullptr);
}

}  // namespace quillgate
