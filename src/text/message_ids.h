// Numbers of the messages that the code uses. The texts are in resources/messages.mc.
#pragma once

namespace quillgate {

using MessageId = unsigned;

inline constexpr MessageId kMsgProductName = 100;
inline constexpr MessageId kMsgGeneral = 1009;
inline constexpr MessageId kMsgPasswordLabel = 1014;
inline constexpr MessageId kMsgConnectionHours = 1017;
inline constexpr MessageId kMsgAddNewUser = 1028;
inline constexpr MessageId kMsgSunday = 1033;  // the other days follow
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
inline constexpr MessageId kMsgConnectionInformation = 1064;
inline constexpr MessageId kMsgDetails = 1065;
inline constexpr MessageId kMsgSessionInformation = 1066;
inline constexpr MessageId kMsgConnectionStatusLabel = 1067;
inline constexpr MessageId kMsgDurationLabel = 1068;
inline constexpr MessageId kMsgDownloadedBytesLabel = 1069;
inline constexpr MessageId kMsgUploadedBytesLabel = 1070;
inline constexpr MessageId kMsgEnabled = 1071;
inline constexpr MessageId kMsgDisabled = 1072;
inline constexpr MessageId kMsgToday = 1073;
inline constexpr MessageId kMsgWeek = 1074;
inline constexpr MessageId kMsgMonth = 1075;
inline constexpr MessageId kMsgTimeOnlineLabel = 1076;
inline constexpr MessageId kMsgDownloadsLabel = 1077;
inline constexpr MessageId kMsgUploadsLabel = 1078;
inline constexpr MessageId kMsgProperty = 1079;
inline constexpr MessageId kMsgValue = 1080;
inline constexpr MessageId kMsgIpAddress = 1081;
inline constexpr MessageId kMsgNetworkProperties = 1082;
inline constexpr MessageId kMsgCurrentStatistics = 1083;
inline constexpr MessageId kMsgDnsServer = 1084;
inline constexpr MessageId kMsgGateway = 1085;
inline constexpr MessageId kMsgMacAddress = 1086;
inline constexpr MessageId kMsgNetworkAdapter = 1087;
inline constexpr MessageId kMsgWarning = 1088;
inline constexpr MessageId kMsgClose = 1089;
inline constexpr MessageId kMsgOk = 1104;
inline constexpr MessageId kMsgCancel = 1105;
inline constexpr MessageId kMsgAboutCaption = 1106;
inline constexpr MessageId kMsgVersion = 1110;
inline constexpr MessageId kMsgTransferRates = 1121;
inline constexpr MessageId kMsgDownloadRateLabel = 1122;
inline constexpr MessageId kMsgUploadRateLabel = 1123;
inline constexpr MessageId kMsgOverrideItem = 1125;
inline constexpr MessageId kMsgRemoveOverrideItem = 1126;
inline constexpr MessageId kMsgOverride = 1127;
inline constexpr MessageId kMsgWait = 1134;
inline constexpr MessageId kMsgWrongPassword = 10004;
inline constexpr MessageId kMsgInvalidUserName = 10006;
inline constexpr MessageId kMsgDatabaseError = 10007;
inline constexpr MessageId kMsgUnknownError = 10008;
inline constexpr MessageId kMsgComponentMissing = 10009;
inline constexpr MessageId kMsgValueOutOfRange = 10012;  // %1 value, %2 lowest, %3 highest
inline constexpr MessageId kMsgClickHours = 20002;
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
