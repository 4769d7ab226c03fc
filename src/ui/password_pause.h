// The pause after wrong passwords, so that passwords cannot be guessed through the logon dialog.
// Owned by the object that opens the dialogs, because a new dialog does not end the pause. Used on
// the service main thread.
#pragma once

#include <windows.h>

namespace quillgate {

class PasswordPause {
 public:
  // Starts a pause: one second after the first wrong password, twice as long after each further one
  // in a row, 64 seconds at most. Ticks are those of GetTickCount, which wrap.
  void NoteWrong(DWORD tick);
  // The next wrong password counts as the first one again.
  void NoteRight() { length_ = 0; }

  // Milliseconds until the next password may be tried; 0: at once.
  DWORD Left(DWORD tick) const;

 private:
  DWORD begin_ = 0;
  // 0: the last password was right, or there was none.
  DWORD length_ = 0;
};

}  // namespace quillgate
