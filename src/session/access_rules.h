// Decides whether the current user may be online now, and how much is left. Applies the user's
// record alone, to administrators too. The session object passes that record to each check, since
// the current user may change between checks. Totals are read from the database only by a refresh:
// until the next one the baselines stay unchanged, also over midnight. Both are deliberate, see
// docs/behaviour.md. Owned by the session object and used under its lock, except ReadTotals, which
// may wait for the database.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "accounts/user.h"
#include "session/connection_log.h"
#include "session/session_meter.h"
#include "session/session_rests.h"
#include "text/message_catalogue.h"
#include "usage/usage_total.h"

namespace quillgate {

enum class AccessReason {
  kAllowed = 0,
  kHourBlocked = 1,
  kTimeUsedUp = 2,
  kDownloadUsedUp = 3,
  kNobodyLoggedOn = 4,
};

// Empty for kAllowed and kNobodyLoggedOn.
std::wstring ReasonText(AccessReason reason, const MessageCatalogue& catalogue);

// The logged usage of one user in the current periods of the user's limits.
struct LoggedUsage {
  std::optional<std::uint64_t> seconds;  // nullopt: unknown period
  std::optional<std::uint64_t> bytes;
  DayRange timeDays;  // the time limit's period
};

class AccessRules {
 public:
  AccessRules(const SessionMeter& meter, const ConnectionLog& log, const SessionRests& rests,
              Database& database, const WeekCalendar& calendar);

  // Checks hours, then time, then download. A limit is used up only when it is exceeded.
  // Deliberate, see docs/behaviour.md. Null: no user is logged on.
  AccessReason CheckAccess(const User* user) const;

  // A refresh has three steps. ReadTotals needs no lock and throws DBerror when the totals cannot
  // be read; the baselines then stay unchanged.
  void BeginRefresh() { stale_ = true; }
  LoggedUsage ReadTotals(const User& user) const;
  // Adds usage that is not in the log: unwritten sessions and fractions of seconds.
  void EndRefresh(const User& user, const LoggedUsage& logged);

  // Whether the last refresh has not ended. The baselines may then be those of another user, or
  // miss the last session.
  bool IsStale() const { return stale_; }
  // Whether the baselines belong to other periods than the user's limits, which were changed since.
  bool AreOfOtherPeriods(const User& user) const;

  // Seconds and bytes until the user's limit is reached, whether or not that limit is enabled. 0
  // when it is exceeded.
  std::uint64_t TimeLeft(const User& user) const;
  std::uint64_t BytesLeft(const User& user) const;

 private:
  std::uint64_t SecondsUsed() const;
  std::uint64_t BytesUsed() const;

  const SessionMeter& meter_;
  const ConnectionLog& log_;
  const SessionRests& rests_;
  Database& database_;
  const WeekCalendar& calendar_;
  std::uint64_t baselineSeconds_ = 0;
  std::uint64_t baselineMilliseconds_ = 0;  // in addition to the seconds
  std::uint64_t baselineBytes_ = 0;
  // The limits' periods at the last refresh; nullopt before the first.
  std::optional<LimitPeriod> timePeriod_;
  std::optional<LimitPeriod> downloadPeriod_;
  bool stale_ = false;
};

}  // namespace quillgate
