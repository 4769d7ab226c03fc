// Decides whether the user who is logged on may be online now, and how much is left. Judges by the
// user's record alone; administrators are no exception. The totals of the database are asked only
// for a refresh: in between, the baselines stay as they were, also over midnight. Owned by the
// session object and used under its lock.
#pragma once

#include <cstdint>
#include <string>

#include "accounts/logon_session.h"
#include "session/connection_log.h"
#include "session/session_meter.h"
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

class AccessRules {
 public:
  AccessRules(const LogonSession& logon, const SessionMeter& meter, const ConnectionLog& log,
              Database& database, const WeekCalendar& calendar);

  // Hours come before time, time before download. A limit is used up when it is exceeded. With
  // `refresh` the user's totals are read first; a DBerror then leaves the baselines as they were.
  AccessReason CheckAccess(bool refresh);

  // Whether the last refresh failed, so that the baselines may be those of another user or miss the
  // last session.
  bool IsStale() const { return stale_; }

  // Seconds and bytes before the limit of the user who is logged on is reached, whether or not that
  // limit is enabled. 0 when it is exceeded, or nobody is logged on.
  std::uint64_t TimeLeft() const;
  std::uint64_t BytesLeft() const;

 private:
  void Refresh(const User& user);
  std::uint64_t Total(UsageMeasure measure, const User& user, LimitPeriod period,
                      std::uint64_t unwritten, std::uint64_t otherwise) const;
  std::uint64_t SecondsUsed() const;
  std::uint64_t BytesUsed() const;

  const LogonSession& logon_;
  const SessionMeter& meter_;
  const ConnectionLog& log_;
  Database& database_;
  const WeekCalendar& calendar_;
  std::uint64_t baselineSeconds_ = 0;
  std::uint64_t baselineBytes_ = 0;
  bool stale_ = false;
};

}  // namespace quillgate
