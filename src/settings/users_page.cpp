#include "settings/users_page.h"

#include <algorithm>

#include "frame/check_box.h"
#include "frame/help_topics.h"
#include "frame/input_dialog.h"
#include "frame/message_boxes.h"
#include "resources/resource.h"
#include "settings/account_dialog.h"
#include "settings/hours_dialog.h"
#include "settings/password_dialog.h"
#include "settings/session_effects.h"
#include "settings/user_name.h"

namespace quillgate {
namespace {

constexpr UINT_PTR kOwnerTimer = 1;
constexpr UINT kOwnerMilliseconds = 500;

constexpr LimitFields kTimeLimit{IDC_TIME_LIMIT, IDC_TIME_LIMIT_AMOUNT, IDC_TIME_LIMIT_PERIOD};
constexpr LimitFields kDownloadLimit{IDC_DOWNLOAD_LIMIT, IDC_DOWNLOAD_LIMIT_AMOUNT,
                                     IDC_DOWNLOAD_LIMIT_PERIOD};

// Whether a notification of a control means that the user has changed a rule.
bool IsRuleChange(int control, int code) {
  return LimitControls::IsChange(kTimeLimit, control, code) ||
         LimitControls::IsChange(kDownloadLimit, control, code) ||
         (control == IDC_ADMINISTRATOR && code == BN_CLICKED);
}

}  // namespace

UsersPage::UsersPage(const SettingsSurroundings& surroundings, SessionLog& session,
                     SheetState& state)
    : PropertyPage(surroundings.ui, IDD_SETTINGS_USERS, kMsgUsers, kTopicSettingsUsers),
      surroundings_(surroundings),
      session_(session),
      state_(state) {}

bool UsersPage::OnInitDialog(HWND window) {
  for (const LimitFields& fields : {kTimeLimit, kDownloadLimit})
    Limit(fields).LimitLength();
  ::SetTimer(window, kOwnerTimer, kOwnerMilliseconds, nullptr);
  return true;
}

// The lists of periods are texts too; the first time the users are loaded as well.
void UsersPage::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {
      {IDC_NEW_USER, kMsgNew},
      {IDC_REMOVE_USER, kMsgRemove},
      {IDC_PASSWORD_GROUP, kMsgPasswordLabel},
      {IDC_CHANGE_PASSWORD, kMsgChange},
      {IDC_HOURS_GROUP, kMsgConnectionHours},
      {IDC_CHANGE_HOURS, kMsgChange},
      {IDC_LIMITS_GROUP, kMsgLimits},
      {IDC_TIME_LIMIT, kMsgEnableTimeLimit},
      {IDC_TIME_LIMIT_LABEL, kMsgAllow},
      {IDC_TIME_LIMIT_UNIT, kMsgMinutesPer},
      {IDC_DOWNLOAD_LIMIT, kMsgEnableDownloadLimit},
      {IDC_DOWNLOAD_LIMIT_LABEL, kMsgAllow},
      {IDC_DOWNLOAD_LIMIT_UNIT, kMsgMegabytesPer},
      {IDC_ADMINISTRATOR, kMsgIsAdministrator},
  };
  ShowTexts(kTexts);
  for (const LimitFields& fields : {kTimeLimit, kDownloadLimit})
    Limit(fields).ListPeriods(Catalogue());
  if (users_ == nullptr) Reload();
  EnableControls();
}

INT_PTR UsersPage::DialogProc(HWND, UINT message, WPARAM wParam, LPARAM) {
  if (message != WM_TIMER || wParam != kOwnerTimer) return FALSE;
  CheckOwner();
  return TRUE;
}

// A dialog over the sheet is closed by the user first.
void UsersPage::CheckOwner() const {
  if (!state_.IsOwnerLoggedOn() && ::IsWindowEnabled(Sheet()))
    PropSheet_PressButton(Sheet(), PSBTN_CANCEL);
}

void UsersPage::OnCancel(HWND window) {
  ::KillTimer(window, kOwnerTimer);
}

ComboBox UsersPage::List() const {
  return {Window(), IDC_USERS};
}

void UsersPage::Reload() {
  system_ = CurrentLogonSystem(surroundings_.settings);
  users_ = surroundings_.logonSystem.Users();
  if (users_ == nullptr) users_ = std::make_shared<UserCollection>(system_, surroundings_.database);
  edits_.emplace(users_);
  const std::wstring loggedOn = state_.LoggedOnName();
  std::vector<std::wstring> names = users_->SortedNames();
  if (!state_.IsForAdministrator())
    std::erase_if(names, [&](const std::wstring& each) { return each != loggedOn; });
  List().Clear();
  for (const std::wstring& name : names)
    List().Add(name);
  const auto own = std::ranges::find(names, loggedOn);
  const auto first = own != names.end() ? own : names.begin();
  List().Select(static_cast<int>(first - names.begin()));
  ShowUser(names.empty() ? std::wstring() : *first);
}

void UsersPage::ShowUser(const std::wstring& name) {
  const auto user = edits_->Find(name);
  shownName_ = user ? name : std::wstring();
  isShowing_ = true;
  Limit(kTimeLimit).Show(user ? user->TimeLimit() : User::Limit{});
  Limit(kDownloadLimit).Show(user ? user->DownloadLimit() : User::Limit{});
  CheckBox(Window(), IDC_ADMINISTRATOR).Check(user && user->IsAdministrator());
  isShowing_ = false;
  EnableControls();
}

UserRights UsersPage::Rights() const {
  ShownUser shown;
  shown.system = system_;
  shown.isForAdministrator = state_.IsForAdministrator();
  shown.isOverride = shownName_ == kOverrideUserName;
  shown.isAny = !shownName_.empty();
  shown.isLastAdministrator = CheckBox(Window(), IDC_ADMINISTRATOR).IsChecked() &&
                              !edits_->HasOtherAdministrator(shownName_);
  return RightsOver(shown);
}

void UsersPage::EnableControls() const {
  // As long as another logon system is only chosen, its users cannot be changed.
  const bool isUsable = !state_.isSystemPending;
  const UserRights rights = Rights();
  const auto enable = [&](int control, bool enabled) {
    Control(Window(), control).Enable(enabled && isUsable);
  };
  enable(IDC_USERS, true);
  enable(IDC_NEW_USER, rights.mayAdd);
  enable(IDC_REMOVE_USER, rights.mayRemove);
  for (const int control : {IDC_PASSWORD_GROUP, IDC_PASSWORD_HINT})
    enable(control, rights.hasPassword);
  enable(IDC_CHANGE_PASSWORD, rights.mayChangePassword);
  enable(IDC_CHANGE_HOURS, rights.mayChangeRules);
  for (const LimitFields& fields : {kTimeLimit, kDownloadLimit})
    Limit(fields).Enable(rights.mayChangeRules && isUsable);
  enable(IDC_ADMINISTRATOR, rights.mayChangeAdministrator);
  const ControlText hints[] = {{IDC_PASSWORD_HINT, rights.passwordHint},
                               {IDC_HOURS_HINT, rights.hoursHint}};
  ShowTexts(hints);
}

void UsersPage::OnActivated() {
  EnableControls();
  if (state_.isSystemPending) ShowMessageBox(kMsgApplySystemFirst, MB_ICONINFORMATION);
}

bool UsersPage::OnCommand(int control, int code) {
  if (isShowing_ || !edits_) return false;
  if (IsRuleChange(control, code)) {
    EnableControls();
    MarkChanged();
    return true;
  }
  if (control == IDC_USERS && code == CBN_SELCHANGE) {
    OnUserSelected();
    return true;
  }
  if (code != BN_CLICKED || !state_.IsOwnerLoggedOn()) return false;
  switch (control) {
    case IDC_NEW_USER:
      AddUser();
      return true;
    case IDC_REMOVE_USER:
      RemoveUser();
      return true;
    case IDC_CHANGE_PASSWORD:
      ChangePassword();
      return true;
    case IDC_CHANGE_HOURS:
      ChangeHours();
      return true;
    default:
      return false;
  }
}

void UsersPage::OnUserSelected() {
  const std::wstring name = List().SelectedText();
  if (name == shownName_) return;
  if (KeepEntered()) return ShowUser(name);
  for (int index = 0; index < List().Count() && List().SelectedText() != shownName_; ++index)
    List().Select(index);
}

template <class Change>
void UsersPage::ChangeShown(Change&& change) {
  auto user = edits_->Find(shownName_);
  if (!user) return;
  change(*user);
  edits_->Change(*std::move(user));
}

bool UsersPage::KeepEntered() {
  if (!Rights().mayChangeRules) return true;
  for (const LimitFields& fields : {kTimeLimit, kDownloadLimit}) {
    if (IsAccepted(Limit(fields).Entry())) continue;
    Activate();
    if (!ReadNumber(fields.amount, kLimitRange)) return false;
  }
  const auto before = edits_->Find(shownName_);
  if (!before) return true;
  const bool isAdministrator = CheckBox(Window(), IDC_ADMINISTRATOR).IsChecked();
  const LimitEntry time = Limit(kTimeLimit).Entry();
  const LimitEntry download = Limit(kDownloadLimit).Entry();
  const bool isSame = EntryOf(before->TimeLimit()) == time &&
                      EntryOf(before->DownloadLimit()) == download &&
                      before->IsAdministrator() == isAdministrator;
  if (isSame) return true;
  ChangeShown([&](User& user) {
    user.SetTimeLimit(LimitOf(time, user.TimeLimit()));
    user.SetDownloadLimit(LimitOf(download, user.DownloadLimit()));
    user.AssignAdministrator(isAdministrator);
  });
  return true;
}

std::optional<std::wstring> UsersPage::AskNewName() {
  if (system_ != LogonSystem::kWindows) {
    return InputDialog(surroundings_.ui, kTopicSettingsUsers)
        .Run(Sheet(), kMsgAddNewUser, kMsgEnterUserName);
  }
  return AskNewAccount(surroundings_.ui, Sheet(), *users_);
}

void UsersPage::AddUser() {
  if (!KeepEntered()) return;
  const auto name = AskNewName();
  if (!name) return;
  if (!IsAcceptableUserName(*name)) return ShowMessageBox(kMsgInvalidUserName, MB_ICONEXCLAMATION);
  User user(*name);
  user.AssignAdministrator(StartsAsAdministrator(system_, edits_->HasOtherAdministrator(*name)));
  if (!users_->AddStored(std::move(user))) {
    return ShowMessageBox(kMsgUserNotAdded, MB_ICONEXCLAMATION);
  }
  List().Select(List().Add(*name));
  ShowUser(*name);
}

void UsersPage::RemoveUser() {
  if (shownName_ == state_.LoggedOnName()) return ShowMessageBox(kMsgUserIsLoggedOn, MB_ICONERROR);
  if (!Ask(kMsgAskRemoveUser)) return;
  if (!users_->RemoveStored(shownName_)) {
    return ShowMessageBox(kMsgUserNotRemoved, MB_ICONEXCLAMATION);
  }
  edits_->Forget(shownName_);
  const int index = List().Selection();
  List().Remove(index);
  List().Select(std::min(index, List().Count() - 1));
  ShowUser(List().SelectedText());
}

void UsersPage::ChangePassword() {
  const auto password = PasswordDialog(surroundings_.ui).Run(Sheet());
  if (!password) return;
  ChangeShown([&](User& user) { user.SetPassword(*password); });
  MarkChanged();
  ShowMessageBox(kMsgPasswordChanged, MB_ICONINFORMATION);
}

void UsersPage::ChangeHours() {
  const auto user = edits_->Find(shownName_);
  if (!user) return;
  HoursDialog dialog(surroundings_.ui, surroundings_.settings, Sheet(), user->ConnectHours());
  if (!dialog.Run() || dialog.Hours() == user->ConnectHours()) return;
  ChangeShown([&](User& changed) { changed.SetConnectHours(dialog.Hours()); });
  MarkChanged();
}

bool UsersPage::OnApply(HWND) {
  if (!state_.IsOwnerLoggedOn()) return true;
  // The General page has changed the logon system just before.
  if (users_ != surroundings_.logonSystem.Users()) {
    Reload();
    return true;
  }
  if (!KeepEntered()) return false;
  if (!edits_->HasChanges()) return true;
  if (!edits_->Store()) {
    ShowError(Sheet(), Catalogue(), Catalogue().GetMessageText(kMsgUnknownError));
    return false;
  }
  session_.ClearWarnings();
  JudgeNow(session_);
  EnableControls();
  return true;
}

}  // namespace quillgate
