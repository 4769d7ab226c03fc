// What the tests of this folder share: the session object over a database that can be made to fail,
// with Anna as its user and her rules to edit.
#pragma once

#include <functional>

#include "program/with_session.h"

namespace quillgate {

constexpr std::uint64_t kMegabyte = 1'048'576;

class SessionTest : public WithSession<ProgramTest> {
 protected:
  // Of the week, when the machine's time begins.
  static constexpr std::size_t kThisHour = 1 * 24 + 18;

  // What a page does with Anna.
  void Edit(const std::function<void(User&)>& edit) {
    User anna = *users_->Find(L"Anna");
    edit(anna);
    ASSERT_TRUE(users_->Replace(std::move(anna)));
  }
  void LimitTime(bool enabled, std::int32_t minutes, LimitPeriod period = LimitPeriod::kDay) {
    Edit([&](User& anna) { anna.SetTimeLimit({enabled, minutes, period}); });
  }
  void LimitDownload(bool enabled, std::int32_t megabytes, LimitPeriod period = LimitPeriod::kDay) {
    Edit([&](User& anna) { anna.SetDownloadLimit({enabled, megabytes, period}); });
  }
  void BlockHour(std::size_t hour, bool blocked = true) {
    HoursTable hours{};
    hours.at(hour) = blocked;
    Edit([&](User& anna) { anna.SetConnectHours(hours); });
  }

  // Anna is on, her session begins now, and nothing is remembered of what led there.
  void LogOn() {
    ASSERT_TRUE(logon_.LogOn({}));
    hook_->ClearCodes();
    indicator_.balloons.clear();
  }
  // The same, with nothing used up before.
  void LogOnAfresh() {
    logon_.LogOff(1);
    database_.DbExecute(L"DELETE FROM ConnLog;");
    LogOn();
  }

  // The row of a session that began when the machine's time did.
  static DbRow Row(const std::wstring& user, const std::wstring& seconds,
                   const std::wstring& sent = L"1000", const std::wstring& received = L"65536") {
    return {user, seconds, sent, received, L"2005-03-14 18:05:09"};
  }

  // From now on, until Mend, no row can be added to the table.
  void BreakWritesTo(const std::wstring& table) {
    database_.DbExecute(L"CREATE TRIGGER Broken BEFORE INSERT ON " + table +
                        L" BEGIN SELECT RAISE(ABORT, 'broken'); END;");
  }
  void MendWrites() { database_.DbExecute(L"DROP TRIGGER Broken;"); }

  // From now on, until Mend, the finished sessions can be neither read nor written.
  void BreakLog() { database_.DbExecute(L"ALTER TABLE ConnLog RENAME TO Gone;"); }
  void MendLog() { database_.DbExecute(L"ALTER TABLE Gone RENAME TO ConnLog;"); }
};

}  // namespace quillgate
