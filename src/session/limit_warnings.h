// Warns once in each session that time or download is about to run out. Owned by the session object
// and used under its lock.
#pragma once

#include "accounts/user.h"
#include "session/access_rules.h"
#include "session/gate_indicator.h"
#include "storage/settings.h"
#include "text/message_catalogue.h"

namespace quillgate {

class LimitWarnings {
 public:
  LimitWarnings(Settings& settings, const MessageCatalogue& catalogue, GateIndicator& indicator)
      : settings_(settings), catalogue_(catalogue), indicator_(indicator) {}

  // Gives the warnings that are due to this user and have not been given since Clear.
  void WarnIfDue(const User& user, const AccessRules& rules);

  // Both warnings may be given again.
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
