#include "ui/password_pause.h"

#include <algorithm>

namespace quillgate {
namespace {

constexpr DWORD kFirstMilliseconds = 1'000;
constexpr DWORD kLongestMilliseconds = 64'000;

}  // namespace

void PasswordPause::NoteWrong(DWORD tick) {
  begin_ = tick;
  length_ = length_ == 0 ? kFirstMilliseconds : std::min(2 * length_, kLongestMilliseconds);
}

DWORD PasswordPause::Left(DWORD tick) const {
  const DWORD passed = tick - begin_;
  return passed < length_ ? length_ - passed : 0;
}

}  // namespace quillgate
