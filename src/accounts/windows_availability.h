// Whether the people who are logged on to Windows can be the users: the notification package that
// reports them is installed and has reported somebody.
#pragma once

#include "accounts/logon_session.h"
#include "text/message_ids.h"

namespace quillgate {

// The message that says why not; 0: they can be. Never throws.
MessageId WindowsLogonHint(WindowsIdentity& identity);

// Whether the package is installed, whoever it has reported.
bool HasWindowsLogonPackage();

}  // namespace quillgate
