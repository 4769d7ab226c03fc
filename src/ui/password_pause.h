// How long nobody may try a password after wrong ones, so that passwords cannot be guessed through
// the dialog. Kept by whoever opens the dialogs, for a new one does not end the pause. Used on the
// service main thread.
#pragma once

#include <windows.h>

namespace quillgate {

class PasswordPause {
 public:
  // Ticks are those of GetTickCount, which turn over.
  // One second after the first wrong password, twice as long after each further one in a row, 64
  // seconds at most.
  void NoteWrong(DWORD tick);
  // The next wrong password counts as the first again.
  void NoteRight() { length_ = 0; }

  // Milliseconds until the next password may be tried; 0: at once.
  DWORD Left(DWORD tick) const;

 private:
  DWORD begin_ = 0;
  // 0: the last password was right, or there was none.
  DWORD length_ = 0;
};

}  // namespace quillgate
