// Warns once per session that time or download is about to run out. Owned by the session object and
// used under its lock.
#pragma once

#include "accounts/user.h"
#include "session/access_rules.h"
#include "session/gate_indicator.h"
#include "storage/settings.h"
#include "text/message_catalogue.h"

namespace quillgate {

// A warning is due when less than this is left; 0: never.
struct WarningThresholds {
  std::uint64_t seconds = 0;
  std::uint32_t bytes = 0;
};

class LimitWarnings {
 public:
  LimitWarnings(Settings& settings, const MessageCatalogue& catalogue, GateIndicator& indicator)
      : settings_(settings), catalogue_(catalogue), indicator_(indicator) {}

  // Whether the user has enabled limits whose warning has not been shown since Clear.
  bool MayBeDue(const User& user) const;

  // The thresholds of the user's limits. Needs no lock, since it may wait for the database.
  WarningThresholds ReadThresholds(const User& user) const;

  // Shows the warnings that are due for this user and have not been shown since Clear.
  void WarnIfDue(const User& user, const WarningThresholds& thresholds, const AccessRules& rules);

  // Allows both warnings to be shown again.
  void Clear();

 private:
  void WarnOfTime(std::uint64_t secondsLeft);
  void WarnOfDownload(std::uint64_t bytesLeft);
  std::wstring Title() const;

  Settings& settings_;
  const MessageCatalogue& catalogue_;
  GateIndicator& indicator_;
  bool timeWarningShown_ = false;
  bool downloadWarningShown_ = false;
};

}  // namespace quillgate
