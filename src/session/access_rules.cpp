#include "session/access_rules.h"

namespace quillgate {
namespace {

constexpr std::uint32_t kSecondsPerMinute = 60;
constexpr int kMegabyteBits = 20;

// Both limits wrap at 32 bits: 4096 megabytes are none.
std::uint32_t LimitSeconds(const User& user) {
  return static_cast<std::uint32_t>(user.TimeLimit().amount) * kSecondsPerMinute;
}

std::uint32_t LimitBytes(const User& user) {
  return static_cast<std::uint32_t>(user.DownloadLimit().amount) << kMegabyteBits;
}

std::uint64_t Left(std::uint64_t used, std::uint32_t limit) {
  return used > limit ? 0 : limit - used;
}

}  // namespace

std::wstring ReasonText(AccessReason reason, const MessageCatalogue& catalogue) {
  switch (reason) {
    case AccessReason::kHourBlocked:
      return catalogue.GetMessageText(kMsgHourBlocked);
    case AccessReason::kTimeUsedUp:
      return catalogue.GetMessageText(kMsgTimeLimitReached);
    case AccessReason::kDownloadUsedUp:
      return catalogue.GetMessageText(kMsgDownloadLimitReached);
    case AccessReason::kAllowed:
    case AccessReason::kNobodyLoggedOn:
      break;
  }
  return {};
}

AccessRules::AccessRules(const LogonSession& logon, const SessionMeter& meter,
                         const ConnectionLog& log, Database& database, const WeekCalendar& calendar)
    : logon_(logon), meter_(meter), log_(log), database_(database), calendar_(calendar) {}

AccessReason AccessRules::CheckAccess(bool refresh) {
  const std::shared_ptr<const User> current = logon_.CurrentUser();
  if (current == nullptr) return AccessReason::kNobodyLoggedOn;
  // One state of the rules for the whole judgement, whatever the settings change meanwhile.
  const User user = *current;
  if (refresh) Refresh(user);
  if (user.IsHourBlocked()) return AccessReason::kHourBlocked;
  if (user.TimeLimit().enabled && SecondsUsed() > LimitSeconds(user)) {
    return AccessReason::kTimeUsedUp;
  }
  if (user.DownloadLimit().enabled && BytesUsed() > LimitBytes(user)) {
    return AccessReason::kDownloadUsedUp;
  }
  return AccessReason::kAllowed;
}

std::uint64_t AccessRules::TimeLeft() const {
  const std::shared_ptr<const User> user = logon_.CurrentUser();
  return user == nullptr ? 0 : Left(SecondsUsed(), LimitSeconds(*user));
}

std::uint64_t AccessRules::BytesLeft() const {
  const std::shared_ptr<const User> user = logon_.CurrentUser();
  return user == nullptr ? 0 : Left(BytesUsed(), LimitBytes(*user));
}

void AccessRules::Refresh(const User& user) {
  stale_ = true;
  const UnwrittenUsage unwritten = log_.UnwrittenOf(user.Name());
  const std::uint64_t seconds = Total(UsageMeasure::kSeconds, user, user.TimeLimit().period,
                                      unwritten.seconds, baselineSeconds_);
  const std::uint64_t bytes = Total(UsageMeasure::kBytesReceived, user, user.DownloadLimit().period,
                                    unwritten.bytesReceived, baselineBytes_);
  baselineSeconds_ = seconds;
  baselineBytes_ = bytes;
  stale_ = false;
}

std::uint64_t AccessRules::Total(UsageMeasure measure, const User& user, LimitPeriod period,
                                 std::uint64_t unwritten, std::uint64_t otherwise) const {
  const UsageTotal total(measure, user.Name(), database_, calendar_);
  switch (period) {
    case LimitPeriod::kDay:
      return total.TodayTotal() + unwritten;
    case LimitPeriod::kWeek:
      return total.WeekTotal() + unwritten;
    case LimitPeriod::kMonth:
      return total.MonthTotal() + unwritten;
    case LimitPeriod::kUnknown:
      break;
  }
  return otherwise;
}

std::uint64_t AccessRules::SecondsUsed() const {
  return meter_.SecondsOnline() + baselineSeconds_;
}

std::uint64_t AccessRules::BytesUsed() const {
  return meter_.BytesReceived() + baselineBytes_;
}

}  // namespace quillgate
