// What the tests of logons share: whose sessions begin and end by them.
#pragma once

#include <utility>

#include "program/program_test.h"

namespace quillgate {

// Writes down whose session begins (+) and whose ends (-).
class RecordingControl final : public SessionControl {
 public:
  explicit RecordingControl(const LogonSession& logon) : logon_(logon) {}

  void Reevaluate() override { Note(L"+"); }
  void EndSession() override { Note(L"-"); }
  std::vector<std::wstring> TakeLog() { return std::exchange(log_, {}); }

 private:
  void Note(const std::wstring& sign) {
    const auto user = logon_.CurrentUser();
    log_.push_back(sign + (user == nullptr ? L"" : user->Name()));
  }

  const LogonSession& logon_;
  std::vector<std::wstring> log_;
};

class LogonTest : public ProgramTest {
 protected:
  LogonTest() { logon_.SetSessionControl(&control_); }

  RecordingControl control_{logon_};
};

}  // namespace quillgate
