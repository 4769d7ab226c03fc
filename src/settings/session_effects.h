// What applied settings mean to the running session.
#pragma once

#include "session/session_log.h"

namespace quillgate {

// Reads the totals anew and runs one enforcement cycle, so that new rules hold at once; a session
// that may go on goes on. A database that fails now is left to the next cycle.
inline void JudgeNow(SessionLog& session) noexcept {
  try {
    session.CheckAccess(true);
    session.RunEnforcementCycle();
  } catch (const std::exception&) {
    // The gate has been judged; what could not be written is written by a later cycle.
  }
}

}  // namespace quillgate
