// A machine on which it is not known who is logged on.
#pragma once

#include "accounts/logon_session.h"

namespace quillgate {

class NoIdentity final : public WindowsIdentity {
 public:
  std::wstring UserName() override { return {}; }
};

}  // namespace quillgate
