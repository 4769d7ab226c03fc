// Decides whether the user who is logged on may be online now, and how much is left. Judges by the
// user's record alone; administrators are no exception. The session object gives that record, one
// for each judgement, for the next one may be by another. The totals of the database are taken only
// for a refresh: in between, the baselines stay as they were, also over midnight. Owned by the
// session object and used under its lock, but for ReadTotals, which may wait for the database.
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

// What the log has of one user in the current periods of the user's limits.
struct LoggedUsage {
  std::optional<std::uint64_t> seconds;  // nothing: of an unknown period
  std::optional<std::uint64_t> bytes;
  DayRange timeDays;  // of the time limit's period
};

class AccessRules {
 public:
  AccessRules(const SessionMeter& meter, const ConnectionLog& log, const SessionRests& rests,
              Database& database, const WeekCalendar& calendar);

  // Hours come before time, time before download. A limit is used up when it is exceeded. Null:
  // nobody is logged on.
  AccessReason CheckAccess(const User* user) const;

  // A refresh in three steps, of which the second needs no lock and throws DBerror when the totals
  // cannot be read; the baselines then stay as they were.
  void BeginRefresh() { stale_ = true; }
  LoggedUsage ReadTotals(const User& user) const;
  // Adds what is not in the log: sessions that are still to be written, and parts of seconds.
  void EndRefresh(const User& user, const LoggedUsage& logged);

  // Whether the last refresh has not ended, so that the baselines may be those of another user or
  // miss the last session.
  bool IsStale() const { return stale_; }
  // Whether the baselines are of other periods than the user's limits, which were replaced since.
  bool AreOfOtherPeriods(const User& user) const;

  // Seconds and bytes before the user's limit is reached, whether or not that limit is enabled. 0
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
  std::uint64_t baselineMilliseconds_ = 0;  // on top of the seconds
  std::uint64_t baselineBytes_ = 0;
  // Of the limits at the last refresh; none before the first.
  std::optional<LimitPeriod> timePeriod_;
  std::optional<LimitPeriod> downloadPeriod_;
  bool stale_ = false;
};

}  // namespace quillgate
