// How long a password cannot be tried after wrong ones.
#include "ui/password_pause.h"

#include <gtest/gtest.h>

namespace quillgate {
namespace {

TEST(PasswordPause, DoublesWithEachWrongPasswordInARowOverTheTurnOfTheTicks) {
  PasswordPause pause;
  DWORD tick = 0xFFFFF000;
  for (const DWORD seconds : {1, 2, 4, 8, 16, 32, 64, 64}) {
    pause.NoteWrong(tick);
    EXPECT_EQ(pause.Left(tick), 1000 * seconds);
    tick += 1000 * seconds;
    EXPECT_EQ(pause.Left(tick), 0u);
  }
  pause.NoteWrong(tick);
  pause.NoteRight();
  pause.NoteWrong(tick);
  EXPECT_EQ(pause.Left(tick + 1), 999u);
}

}  // namespace
}  // namespace quillgate
