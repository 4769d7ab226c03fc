#include "ui/tray_commands.h"

#include "frame/help_topics.h"
#include "frame/message_boxes.h"

namespace quillgate {

TrayCommands::TrayCommands(const TraySurroundings& surroundings, GateIndicator& indicator)
    : catalogue_(surroundings.catalogue),
      settings_(surroundings.settings),
      logon_(surroundings.logon),
      logonControl_(surroundings.logonControl),
      help_(surroundings.help),
      openers_(surroundings.openers),
      indicator_(indicator) {}

TrayMenuState TrayCommands::State() const {
  return CurrentTrayMenuState(settings_, logon_);
}

void TrayCommands::Perform(int command) noexcept {
  try {
    Execute(static_cast<TrayCommand>(command));
  } catch (...) {
    ShowCurrentException(nullptr, catalogue_);
  }
}

void TrayCommands::PerformDoubleClick() noexcept {
  try {
    ExecuteDoubleClick();
  } catch (...) {
    ShowCurrentException(nullptr, catalogue_);
  }
}

void TrayCommands::Execute(TrayCommand command) {
  switch (command) {
    case TrayCommand::kExit:
      logonControl_.LogOffFromTray();
      Open(openers_.stopService);
      break;
    case TrayCommand::kSettings:
      if (logon_.IsLoggedOn()) Open(openers_.settings);
      break;
    case TrayCommand::kStatistics:
      Open(openers_.statistics);
      break;
    case TrayCommand::kLogOff:
      logonControl_.LogOffFromTray();
      break;
    case TrayCommand::kLogOn:
      // Users that the system logs on cannot log off here, so they get no reminder.
      if (CurrentLogonSystem(settings_) == LogonSystem::kQuillgate) {
        LogOnWithReminder();
      } else {
        logonControl_.LogOnFromTray({});
      }
      break;
    case TrayCommand::kAbout:
      Open(openers_.about);
      break;
    case TrayCommand::kHelpTopics:
      help_.ShowTopic(kTopicIndex);
      break;
    case TrayCommand::kConnection:
      if (logon_.IsLoggedOn()) Open(openers_.connection);
      break;
    case TrayCommand::kOverride:
      Override(kOverrideUserName);
      break;
    case TrayCommand::kRemoveOverride:
      Override(kCommonUserName);
      break;
    case TrayCommand::kNone:
    case TrayCommand::kHelp:
      break;
  }
}

void TrayCommands::ExecuteDoubleClick() {
  const TrayMenuState state = State();
  if (state.logonSystem == LogonSystem::kNone) {
    Open(openers_.connection);
  } else if (!state.isLoggedOn) {
    LogOnWithReminder();
  } else {
    Open(state.MaySeeStatistics() ? openers_.statistics : openers_.connection);
  }
}

void TrayCommands::LogOnWithReminder() {
  if (logonControl_.LogOnFromTray({})) RemindToLogOff();
}

void TrayCommands::Override(std::wstring_view userName) {
  logonControl_.LogOffFromTray();
  logonControl_.LogOnFromTray(userName);
}

void TrayCommands::RemindToLogOff() {
  const auto user = logon_.CurrentUser();
  if (user == nullptr) return;
  const std::wstring key = std::wstring(kReminderKeyPrefix) + user->Name();
  if (!settings_.GetSetting(key, {}).empty()) return;
  indicator_.ShowMessage(catalogue_.GetMessageText(kMsgReminderText),
                         catalogue_.GetMessageText(kMsgReminder), BalloonIcon::kInformation, 0);
  settings_.SetSetting(key, L"1");
}

void TrayCommands::Open(const std::function<void()>& opener) {
  if (opener) {
    opener();
    return;
  }
  ShowError(nullptr, catalogue_, catalogue_.GetMessageText(kMsgComponentMissing));
}

}  // namespace quillgate
