// Numbers of the messages that the code names. The texts stand in resources/messages.mc.
#pragma once

namespace quillgate {

using MessageId = unsigned;

inline constexpr MessageId kMsgProductName = 100;
inline constexpr MessageId kMsgWarning = 1088;
inline constexpr MessageId kMsgConnectionEnabled = 20005;
inline constexpr MessageId kMsgConnectionDisabled = 20006;
inline constexpr MessageId kMsgHourBlocked = 20007;
inline constexpr MessageId kMsgTimeLimitReached = 20008;
inline constexpr MessageId kMsgDownloadLimitReached = 20009;
inline constexpr MessageId kMsgMinutesLeft = 20012;    // %1 minutes
inline constexpr MessageId kMsgMegabytesLeft = 20013;  // %1 megabytes
inline constexpr MessageId kMsgWelcome = 20019;
inline constexpr MessageId kMsgWelcomeText = 20022;

}  // namespace quillgate
