// The dialogs of a logon where there is nobody to ask: each one counts as cancelled.
#pragma once

#include "accounts/logon_session.h"

namespace quillgate {

class UnattendedPrompts final : public LogonPrompts {
 public:
  std::optional<std::wstring> AskLogon(LogonSystem, UserCollection&) override { return {}; }
  std::optional<std::wstring> AskFirstUserName() override { return {}; }
  void TellFirstUserMade() override {}
};

}  // namespace quillgate
