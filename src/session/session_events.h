// Told when a session begins and ends. The session object calls it on the thread that switched the
// gate, while it holds its own lock: an implementation must not wait for another thread, call the
// session object, or throw.
#pragma once

#include <string>

#include "session/access_rules.h"
#include "session/session_meter.h"

namespace quillgate {

class SessionEvents {
 public:
  virtual ~SessionEvents() = default;

  virtual void SessionBegan(const std::wstring& user) = 0;
  // kNobodyLoggedOn: the user has logged off.
  virtual void SessionEnded(const SessionRecord& session, AccessReason reason) = 0;
};

}  // namespace quillgate
