#include "wizard/user_setup_page.h"

#include <algorithm>

#include "frame/edit.h"
#include "resources/resource.h"
#include "settings/account_dialog.h"
#include "settings/hours_dialog.h"
#include "settings/user_name.h"

namespace quillgate {
namespace {

constexpr LimitFields kLimit{IDC_DETAILS_LIMIT, IDC_DETAILS_LIMIT_AMOUNT, IDC_DETAILS_LIMIT_PERIOD};
constexpr int kMaximumPassword = 64;
constexpr int kAdministratorColumn = 1;

}  // namespace

UserSetupPage::UserSetupPage(const WizardSurroundings& surroundings, WizardState& state)
    : SetupPage(surroundings, state, IDD_SETUP_USERS,
                Header{kMsgUserSetupTitle, kMsgUserSetupSubtitle}) {}

ListView UserSetupPage::List() const {
  return {Window(), IDC_DETAILS_USERS};
}

LimitControls UserSetupPage::Limit() const {
  return {Window(), kLimit};
}

bool UserSetupPage::OnInitDialog(HWND window) {
  Edit(window, IDC_DETAILS_PASSWORD).LimitLength(kMaximumPassword);
  Limit().LimitLength();
  Limit().ListPeriods(Catalogue());
  List().SelectWholeRows();
  List().AddColumn({}, 0);
  List().AddColumn({}, 0);
  return true;
}

void UserSetupPage::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {
      {IDC_DETAILS_EXPLANATION, kMsgUserSetupExplanation},
      {IDC_DETAILS_NEW, kMsgNew},
      {IDC_DETAILS_REMOVE, kMsgRemove},
      {IDC_DETAILS_GROUP, kMsgUserDetails},
      {IDC_DETAILS_NAME_LABEL, kMsgUserNameLabel},
      {IDC_DETAILS_PASSWORD_LABEL, kMsgSetupPassword},
      {IDC_DETAILS_HOURS_HINT, kMsgUserSetupHours},
      {IDC_DETAILS_HOURS, kMsgHoursButton},
      {IDC_DETAILS_LIMIT, kMsgEnableTimeLimit},
      {IDC_DETAILS_LIMIT_LABEL, kMsgAllow},
      {IDC_DETAILS_LIMIT_UNIT, kMsgMinutesPer},
  };
  ShowTexts(kTexts);
}

// The pages before may have chosen another logon system or set another administrator.
void UserSetupPage::OnSetActive() {
  ListUsers(ShownName());
}

void UserSetupPage::ListUsers(const std::wstring& name) {
  isShowing_ = true;
  List().Clear();
  names_.clear();
  for (const std::wstring& each : State().Users().SortedNames())
    AddRow(*State().Users().Find(each));
  for (const int column : {0, kAdministratorColumn})
    List().FitColumn(column);
  isShowing_ = false;
  if (names_.empty()) return ShowUser({});
  const auto found = std::ranges::find(names_, name);
  ShowUser(found != names_.end() ? static_cast<std::size_t>(found - names_.begin()) : 0);
}

void UserSetupPage::AddRow(const User& user) {
  names_.push_back(user.Name());
  const int row = List().AddRow(user.Name());
  if (!user.IsAdministrator()) return;
  List().SetCell(row, kAdministratorColumn, Catalogue().GetMessageText(kMsgAdministratorTitle));
}

void UserSetupPage::ShowUser(std::optional<std::size_t> row) {
  isShowing_ = true;
  shown_ = row;
  const auto user = State().Users().Find(ShownName());
  if (row) List().SelectAndShow(static_cast<int>(*row));
  Edit(Window(), IDC_DETAILS_NAME).SetText(ShownName());
  Edit(Window(), IDC_DETAILS_PASSWORD).SetText({});
  Limit().Show(user != nullptr ? user->TimeLimit() : User::Limit{});
  isPasswordNew_ = false;
  isShowing_ = false;
  EnableControls();
}

UserRights UserSetupPage::Rights() const {
  ShownUser shown;
  shown.system = State().UsersSystem();
  shown.isForAdministrator = true;
  shown.isAny = shown_.has_value();
  return RightsOver(shown);
}

void UserSetupPage::EnableControls() const {
  const UserRights rights = Rights();
  const bool isNamedHere = !State().IsSetAdministrator(ShownName());
  Control(Window(), IDC_DETAILS_NEW).Enable(rights.mayAdd);
  Control(Window(), IDC_DETAILS_REMOVE).Enable(rights.mayRemove);
  // Accounts of the machine have their names and passwords there.
  for (const int control : {IDC_DETAILS_NAME, IDC_DETAILS_PASSWORD})
    Control(Window(), control).Enable(rights.mayChangePassword && isNamedHere);
  Control(Window(), IDC_DETAILS_HOURS).Enable(rights.mayChangeRules);
  Limit().Enable(rights.mayChangeRules);
}

bool UserSetupPage::OnCommand(int control, int code) {
  if (isShowing_) return false;
  if (control == IDC_DETAILS_PASSWORD && code == EN_CHANGE) isPasswordNew_ = true;
  if (code != BN_CLICKED) return false;
  switch (control) {
    case IDC_DETAILS_NEW:
      AddUser();
      return true;
    case IDC_DETAILS_REMOVE:
      RemoveUser();
      return true;
    case IDC_DETAILS_HOURS:
      ChangeHours();
      return true;
    case IDC_DETAILS_LIMIT:
      EnableControls();
      return true;
    default:
      return false;
  }
}

bool UserSetupPage::OnNotify(const NMHDR& header) {
  if (header.idFrom != IDC_DETAILS_USERS || isShowing_) return false;
  const auto row = ListView::SelectedBy(header);
  if (row) OnSelected(static_cast<std::size_t>(*row));
  return row.has_value();
}

void UserSetupPage::OnSelected(std::size_t row) {
  if (row == shown_ || row >= names_.size()) return;
  if (Keep()) return ShowUser(row);
  isShowing_ = true;
  List().SelectAndShow(static_cast<int>(*shown_));
  isShowing_ = false;
}

bool UserSetupPage::Keep() {
  if (!shown_) return true;
  const std::wstring name = Edit(Window(), IDC_DETAILS_NAME).Text();
  const LimitEntry limit = Limit().Entry();
  if (!IsNameAccepted(name)) return false;
  if (!IsAccepted(limit) && !ReadNumber(kLimit.amount, kLimitRange)) return false;
  UserCollection& users = State().Users();
  users.Rename(ShownName(), name);
  User user = *users.Find(name);
  user.SetTimeLimit(LimitOf(limit, user.TimeLimit()));
  if (isPasswordNew_) user.SetPassword(Edit(Window(), IDC_DETAILS_PASSWORD).Text());
  users.Replace(std::move(user));
  names_[*shown_] = name;
  List().SetCell(static_cast<int>(*shown_), 0, name);
  return true;
}

bool UserSetupPage::IsNameAccepted(const std::wstring& name) const {
  if (name == ShownName()) return true;
  const bool isTaken = State().Users().Contains(name);
  if (!isTaken && IsAcceptableUserName(name)) return true;
  RefuseEntry(IDC_DETAILS_NAME, isTaken ? kMsgUserNotAdded : kMsgInvalidUserName);
  return false;
}

// People without an account of the machine get a name that is then replaced in the details.
std::optional<std::wstring> UserSetupPage::ChooseNewName() {
  const UserCollection& users = State().Users();
  if (State().UsersSystem() == LogonSystem::kWindows) {
    return AskNewAccount(Surroundings().ui, Sheet(), users);
  }
  const std::wstring base = Catalogue().GetMessageText(kMsgNewUser);
  std::wstring name = base;
  for (int number = 2; users.Contains(name); ++number)
    name = base + L' ' + std::to_wstring(number);
  return name;
}

void UserSetupPage::AddUser() {
  if (!Keep()) return;
  const auto name = ChooseNewName();
  if (!name) return;
  if (!IsAcceptableUserName(*name)) return ShowMessageBox(kMsgInvalidUserName, MB_ICONEXCLAMATION);
  User user(*name);
  // Under WINDOWS there is no administrator page: the first user is the administrator.
  user.AssignAdministrator(!State().Users().HasAdministrator());
  if (!State().Users().Add(std::move(user))) {
    return ShowMessageBox(kMsgUserNotAdded, MB_ICONEXCLAMATION);
  }
  ListUsers(*name);
  const Edit field(Window(), IDC_DETAILS_NAME);
  if (!::IsWindowEnabled(field.Window())) return;
  field.SelectAll();
  field.Focus();
}

void UserSetupPage::RemoveUser() {
  if (!Ask(kMsgAskRemoveUser)) return;
  if (!State().RemoveUser(ShownName())) {
    return ShowMessageBox(kMsgUserNotRemoved, MB_ICONEXCLAMATION);
  }
  ListUsers({});
}

void UserSetupPage::ChangeHours() {
  const auto before = State().Users().Find(ShownName());
  if (before == nullptr) return;
  HoursDialog dialog(Surroundings().ui, Surroundings().settings, Sheet(), before->ConnectHours());
  if (!dialog.Run()) return;
  User user = *before;
  user.SetConnectHours(dialog.Hours());
  State().Users().Replace(std::move(user));
}

}  // namespace quillgate
