#include "session/access_rules.h"

namespace quillgate {
namespace {

constexpr std::uint32_t kSecondsPerMinute = 60;
constexpr std::uint64_t kMillisecondsPerSecond = 1000;
constexpr int kMegabyteBits = 20;

// Both limits wrap at 32 bits. Deliberate, see docs/behaviour.md.
std::uint32_t LimitSeconds(const User& user) {
  return static_cast<std::uint32_t>(user.TimeLimit().amount) * kSecondsPerMinute;
}

std::uint32_t LimitBytes(const User& user) {
  return static_cast<std::uint32_t>(user.DownloadLimit().amount) << kMegabyteBits;
}

std::uint64_t Left(std::uint64_t used, std::uint32_t limit) {
  return used > limit ? 0 : limit - used;
}

// nullopt for an unknown period.
std::optional<DayRange> DaysOf(LimitPeriod period, const WeekCalendar& calendar) {
  switch (period) {
    case LimitPeriod::kDay:
      return Today();
    case LimitPeriod::kWeek:
      return ThisWeek(calendar);
    case LimitPeriod::kMonth:
      return ThisMonth();
    case LimitPeriod::kUnknown:
      break;
  }
  return {};
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

AccessRules::AccessRules(const SessionMeter& meter, const ConnectionLog& log,
                         const SessionRests& rests, Database& database,
                         const WeekCalendar& calendar)
    : meter_(meter), log_(log), rests_(rests), database_(database), calendar_(calendar) {}

AccessReason AccessRules::CheckAccess(const User* user) const {
  if (user == nullptr) return AccessReason::kNobodyLoggedOn;
  if (user->IsHourBlocked()) return AccessReason::kHourBlocked;
  if (user->TimeLimit().enabled && SecondsUsed() > LimitSeconds(*user)) {
    return AccessReason::kTimeUsedUp;
  }
  if (user->DownloadLimit().enabled && BytesUsed() > LimitBytes(*user)) {
    return AccessReason::kDownloadUsedUp;
  }
  return AccessReason::kAllowed;
}

bool AccessRules::AreOfOtherPeriods(const User& user) const {
  return timePeriod_ != user.TimeLimit().period || downloadPeriod_ != user.DownloadLimit().period;
}

std::uint64_t AccessRules::TimeLeft(const User& user) const {
  return Left(SecondsUsed(), LimitSeconds(user));
}

std::uint64_t AccessRules::BytesLeft(const User& user) const {
  return Left(BytesUsed(), LimitBytes(user));
}

LoggedUsage AccessRules::ReadTotals(const User& user) const {
  LoggedUsage logged;
  if (const auto days = DaysOf(user.TimeLimit().period, calendar_)) {
    const UsageTotal total(UsageMeasure::kSeconds, user.Name(), database_, calendar_);
    logged.seconds = total.Sum(*days);
    logged.timeDays = *days;
  }
  if (const auto days = DaysOf(user.DownloadLimit().period, calendar_)) {
    const UsageTotal total(UsageMeasure::kBytesReceived, user.Name(), database_, calendar_);
    logged.bytes = total.Sum(*days);
  }
  return logged;
}

void AccessRules::EndRefresh(const User& user, const LoggedUsage& logged) {
  const UnwrittenUsage unwritten = log_.UnwrittenOf(user.Name());
  if (logged.seconds) {
    baselineSeconds_ = *logged.seconds + unwritten.seconds;
    baselineMilliseconds_ = rests_.Milliseconds(user.Name(), logged.timeDays);
  }
  if (logged.bytes) baselineBytes_ = *logged.bytes + unwritten.bytesReceived;
  timePeriod_ = user.TimeLimit().period;
  downloadPeriod_ = user.DownloadLimit().period;
  stale_ = false;
}

std::uint64_t AccessRules::SecondsUsed() const {
  const OnlineTime time = meter_.TimeOnline();
  return baselineSeconds_ + time.seconds +
         (baselineMilliseconds_ + time.restMilliseconds) / kMillisecondsPerSecond;
}

std::uint64_t AccessRules::BytesUsed() const {
  return meter_.BytesReceived() + baselineBytes_;
}

}  // namespace quillgate
