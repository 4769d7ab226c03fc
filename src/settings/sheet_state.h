// What the pages of one settings sheet share. Owned by the sheet, used on the service main thread.
#pragma once

#include <string>

#include "accounts/logon_session.h"

namespace quillgate {

class SheetState {
 public:
  // The sheet is open for whoever is logged on now.
  explicit SheetState(const LogonSession& logon) : logon_(logon) { FollowLogon(); }

  bool IsForAdministrator() const { return isForAdministrator_; }

  // False as soon as another user, or nobody, is logged on instead: the sheet then closes and
  // stores nothing more.
  bool IsOwnerLoggedOn() const { return LoggedOnName() == ownerName_; }
  // The sheet itself has changed who is logged on.
  void FollowLogon() {
    const auto user = logon_.CurrentUser();
    ownerName_ = user == nullptr ? std::wstring() : user->Name();
    isForAdministrator_ = isForAdministrator_ || (user != nullptr && user->IsAdministrator());
  }
  std::wstring LoggedOnName() const {
    const auto user = logon_.CurrentUser();
    return user == nullptr ? std::wstring() : user->Name();
  }

  // Another logon system is chosen and not applied yet.
  bool isSystemPending = false;

 private:
  const LogonSession& logon_;
  std::wstring ownerName_;
  bool isForAdministrator_ = false;
};

}  // namespace quillgate
