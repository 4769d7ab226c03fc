#include "ui/tray_menu.h"

#include "resources/resource.h"

namespace quillgate {
namespace {

const TrayMenuItem kSeparator;

bool HasOverride(const TrayMenuState& state) {
  return state.userName == kOverrideUserName;
}

bool HasStatistics(const TrayMenuState& state) {
  return state.logonSystem != LogonSystem::kNone && state.MaySeeStatistics();
}

bool HasSettings(const TrayMenuState& state) {
  return state.isLoggedOn && (state.logonSystem != LogonSystem::kNone || HasOverride(state));
}

void AppendLogon(const TrayMenuState& state, std::vector<TrayMenuItem>& items) {
  if (state.logonSystem != LogonSystem::kQuillgate) return;
  if (state.isLoggedOn) {
    items.push_back({kMsgLogOff, TrayCommand::kLogOff, 0, {}});
  } else {
    items.push_back({kMsgLogOnItem, TrayCommand::kLogOn, IDI_MENU_LOG_ON, {}});
  }
  if (state.isLoggedOn || HasStatistics(state)) items.push_back(kSeparator);
}

void AppendSheets(const TrayMenuState& state, std::vector<TrayMenuItem>& items) {
  if (HasStatistics(state)) {
    items.push_back({kMsgStatisticsItem, TrayCommand::kStatistics, IDI_MENU_STATISTICS, {}});
  }
  if (state.isLoggedOn) {
    items.push_back({kMsgConnectionItem, TrayCommand::kConnection, IDI_MENU_CONNECTION, {}});
  }
  if (HasSettings(state)) {
    items.push_back({kMsgSettingsItem, TrayCommand::kSettings, IDI_MENU_SETTINGS, {}});
  }
}

void AppendOverride(const TrayMenuState& state, std::vector<TrayMenuItem>& items) {
  if (state.logonSystem != LogonSystem::kNone) return;
  if (HasOverride(state)) {
    items.push_back({kMsgRemoveOverrideItem, TrayCommand::kRemoveOverride, 0, {}});
  } else {
    items.push_back({kMsgOverrideItem, TrayCommand::kOverride, IDI_MENU_OVERRIDE, {}});
  }
}

TrayMenuItem HelpItem() {
  return {kMsgHelp,
          TrayCommand::kHelp,
          IDI_MENU_HELP,
          {{kMsgHelpTopics, TrayCommand::kHelpTopics, 0, {}},
           kSeparator,
           {kMsgAboutItem, TrayCommand::kAbout, 0, {}}}};
}

TrayCommand DefaultCommand(const TrayMenuState& state) {
  switch (state.logonSystem) {
    case LogonSystem::kNone:
      return TrayCommand::kConnection;
    case LogonSystem::kWindows:
      return TrayCommand::kStatistics;
    case LogonSystem::kQuillgate:
      break;
  }
  if (!state.isLoggedOn) return TrayCommand::kLogOn;
  return HasStatistics(state) ? TrayCommand::kStatistics : TrayCommand::kConnection;
}

}  // namespace

TrayMenuState CurrentTrayMenuState(Settings& settings, const LogonSession& logon) {
  TrayMenuState state;
  state.logonSystem = CurrentLogonSystem(settings);
  state.statisticsForAdministrators =
      settings.GetSetting(SettingKey::kStatisticsForAdmins, kNo) == kYes;
  if (const auto user = logon.CurrentUser()) {
    state.isLoggedOn = true;
    state.userName = user->Name();
    state.isAdministrator = user->IsAdministrator();
  }
  return state;
}

TrayMenu BuildTrayMenu(const TrayMenuState& state) {
  TrayMenu menu;
  AppendLogon(state, menu.items);
  AppendSheets(state, menu.items);
  AppendOverride(state, menu.items);
  menu.items.push_back(kSeparator);
  menu.items.push_back(HelpItem());
  if (state.isLoggedOn && state.isAdministrator) {
    menu.items.push_back(kSeparator);
    menu.items.push_back({kMsgExit, TrayCommand::kExit, IDI_MENU_EXIT, {}});
  }
  menu.defaultCommand = DefaultCommand(state);
  return menu;
}

}  // namespace quillgate
