// Numbers of the messages that the code names. The texts stand in resources/messages.mc.
#pragma once

namespace quillgate {

using MessageId = unsigned;

inline constexpr MessageId kMsgProductName = 100;
inline constexpr MessageId kMsgPasswordLabel = 1014;
inline constexpr MessageId kMsgAddNewUser = 1028;
inline constexpr MessageId kMsgUserNameLabel = 1040;
inline constexpr MessageId kMsgLogOnCaption = 1041;
inline constexpr MessageId kMsgLogOn = 1042;
inline constexpr MessageId kMsgLogOnItem = 1043;
inline constexpr MessageId kMsgLogOff = 1044;
inline constexpr MessageId kMsgExit = 1045;
inline constexpr MessageId kMsgHelp = 1046;
inline constexpr MessageId kMsgSettingsItem = 1048;
inline constexpr MessageId kMsgStatisticsItem = 1049;
inline constexpr MessageId kMsgHelpTopics = 1053;
inline constexpr MessageId kMsgAboutItem = 1054;
inline constexpr MessageId kMsgConnectionItem = 1058;
inline constexpr MessageId kMsgWarning = 1088;
inline constexpr MessageId kMsgOk = 1104;
inline constexpr MessageId kMsgCancel = 1105;
inline constexpr MessageId kMsgOverrideItem = 1125;
inline constexpr MessageId kMsgRemoveOverrideItem = 1126;
inline constexpr MessageId kMsgOverride = 1127;
inline constexpr MessageId kMsgWrongPassword = 10004;
inline constexpr MessageId kMsgDatabaseError = 10007;
inline constexpr MessageId kMsgUnknownError = 10008;
inline constexpr MessageId kMsgComponentMissing = 10009;
inline constexpr MessageId kMsgNeedToLogOn = 20003;
inline constexpr MessageId kMsgEnterOverridePassword = 20004;
inline constexpr MessageId kMsgConnectionEnabled = 20005;
inline constexpr MessageId kMsgConnectionDisabled = 20006;
inline constexpr MessageId kMsgHourBlocked = 20007;
inline constexpr MessageId kMsgTimeLimitReached = 20008;
inline constexpr MessageId kMsgDownloadLimitReached = 20009;
inline constexpr MessageId kMsgEnterFirstUser = 20010;
inline constexpr MessageId kMsgFirstUserMade = 20011;
inline constexpr MessageId kMsgMinutesLeft = 20012;    // %1 minutes
inline constexpr MessageId kMsgMegabytesLeft = 20013;  // %1 megabytes
inline constexpr MessageId kMsgReminder = 20017;
inline constexpr MessageId kMsgReminderText = 20018;
inline constexpr MessageId kMsgWelcome = 20019;
inline constexpr MessageId kMsgWelcomeText = 20022;

}  // namespace quillgate
