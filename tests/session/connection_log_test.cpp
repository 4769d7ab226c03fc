// The rows of finished and running sessions, in order and when the database fails.
#include "session/connection_log.h"

#include "session_test.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ConnectionLogTest : public SessionTest {
 protected:
  static SessionRecord Session(const std::wstring& user, std::uint64_t seconds) {
    // 2005-03-14 18:05:09.
    return {user, seconds, 1000, 65536, 38425.0 + (18 * 3600 + 5 * 60 + 9) / 86400.0};
  }

  static void Write(ConnectionLog& log, const std::optional<SessionRecord>& running) {
    const ConnectionLog::Batch batch = log.Due(running);
    if (batch.IsToBeWritten()) {
      log.Write(batch);
      log.Forget(batch);
    }
    batch.refused.Rethrow();
  }
  void Finish(const SessionRecord& session) {
    log_.Keep(session);
    Write(log_, {});
  }
  void Snapshot(const SessionRecord& session) { Write(log_, session); }

  ConnectionLog log_{database_};
};

TEST_F(ConnectionLogTest, SecondsPast32BitsAndAnInvalidStartAreWrittenAsTheyAre) {
  SessionRecord session = Session(L"Anna", 0xFFFFFFFFFFFFFFFF);
  Finish(session);
  session.startDate = kInvalidDate;
  Finish(session);
  DbRow row = Row(L"Anna", L"18446744073709551615");
  EXPECT_EQ(Rows(L"ConnLog").at(0), row);
  row.back() = L"";
  EXPECT_EQ(Rows(L"ConnLog").at(1), row);
}

TEST_F(ConnectionLogTest, ACrashedSessionIsRecoveredOnceFromItsLastSnapshotThatSucceeded) {
  Snapshot(Session(L"Anna", 1));
  Snapshot(Session(L"Anna", 20));
  BreakWritesTo(L"CrashLog");
  EXPECT_THROW(Snapshot(Session(L"Anna", 21)), DBerror);
  MendWrites();
  BreakWritesTo(L"ConnLog");
  ConnectionLog next(database_);
  next.KeepCrashed();
  EXPECT_THROW(Write(next, {}), DBerror);
  EXPECT_THAT(Rows(L"CrashLog"), ElementsAre(Row(L"Anna", L"20")));
  MendWrites();
  // Before the next snapshot.
  Write(next, Session(L"Bo", 1));
  EXPECT_THAT(Rows(L"ConnLog"), ElementsAre(Row(L"Anna", L"20")));
  EXPECT_THAT(Rows(L"CrashLog"), ElementsAre(Row(L"Bo", L"1")));
  for (int start = 0; start < 2; ++start) {
    ConnectionLog later(database_);
    later.KeepCrashed();
    Write(later, {});
    EXPECT_THAT(Rows(L"ConnLog"), ElementsAre(Row(L"Anna", L"20"), Row(L"Bo", L"1")));
    EXPECT_THAT(Rows(L"CrashLog"), IsEmpty());
  }
}

TEST_F(ConnectionLogTest, AFinishedSessionThatCannotBeWrittenIsCountedAndWrittenLaterOnce) {
  Snapshot(Session(L"Anna", 20));
  BreakWritesTo(L"ConnLog");
  EXPECT_THROW(Finish(Session(L"Anna", 30)), DBerror);
  EXPECT_THAT(Rows(L"CrashLog"), ElementsAre(Row(L"Anna", L"20"))) << "its only trace is gone";
  EXPECT_EQ(log_.UnwrittenOf(L"Anna").seconds, 30u);
  EXPECT_EQ(log_.UnwrittenOf(L"Anna").bytesReceived, 65536u);
  EXPECT_EQ(log_.UnwrittenOf(L"Bo").seconds, 0u);
  EXPECT_THROW(Snapshot(Session(L"Bo", 0)), DBerror);

  MendWrites();
  log_.KeepCrashed();  // does not recover a session whose end is known
  Snapshot(Session(L"Bo", 5));
  EXPECT_THAT(Rows(L"ConnLog"), ElementsAre(Row(L"Anna", L"30")));
  EXPECT_THAT(Rows(L"CrashLog"), ElementsAre(Row(L"Bo", L"5")));
  EXPECT_EQ(log_.UnwrittenOf(L"Anna").seconds, 0u);
  EXPECT_FALSE(log_.HasUnwritten());
}

TEST_F(ConnectionLogTest, ANameThatCannotBeWrittenSmugglesNothingAndHoldsNobodyUp) {
  for (const std::wstring& name :
       {std::wstring(L"x', '1', '1', '1', '1'); DELETE FROM CrashLog; --"),
        std::wstring(500, L'\u00E5')}) {
    Snapshot(Session(L"Anna", 20));
    EXPECT_THROW(Finish(Session(name, 1)), DBerror);
    EXPECT_THROW(Snapshot(Session(name, 1)), DBerror);
    EXPECT_THAT(Rows(L"ConnLog"), IsEmpty());
    EXPECT_THAT(Rows(L"CrashLog"), ElementsAre(Row(L"Anna", L"20")));
  }
  log_.Keep(Session(L"O'Brien", 1));
  EXPECT_THROW(Finish(Session(L"Anna", 30)), DBerror);
  EXPECT_THAT(Rows(L"ConnLog"), ElementsAre(Row(L"Anna", L"30")));
  EXPECT_FALSE(log_.HasUnwritten());
}

}  // namespace
}  // namespace quillgate
