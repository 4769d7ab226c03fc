// The user who is logged on to Windows, as the logon notification package stored the name in the
// table WlNpData. The program only reads that table. Any thread.
#pragma once

#include "accounts/logon_session.h"
#include "storage/database.h"

namespace quillgate {

class WindowsLogonName final : public WindowsIdentity {
 public:
  explicit WindowsLogonName(Database& database) : database_(database) {}

  // Empty unless there is exactly one row with the key "UserName". Throws DBerror, and
  // std::out_of_range for a row without columns.
  std::wstring UserName() override;

 private:
  Database& database_;
};

}  // namespace quillgate
