// Three hundred SIGKILLs at random moments: while sessions are measured and logged, while the user
// table is being replaced, and while the setup wizard stores a configuration. The victims do the
// program's writing on a simulated machine with the real database engine; what they had reported as
// done when they died must be in the database, which the stock sqlite3 reads.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <thread>

#include "lab/database_folder.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/file_descriptor.h"
#include "platform/kernel/path.h"
#include "program/program_test.h"
#include "program/recording_indicator.h"
#include "session/session_log.h"
#include "wizard/wizard_state.h"

namespace quillgate {
namespace {

constexpr int kKills = 100;  // of each kind
constexpr int kUsers = 25;
constexpr int kCyclesPerSession = 4;
constexpr std::chrono::seconds kCycle{20};
constexpr wchar_t kCard[] = L"card";

// Appends lines to a file, each in one write, so that it is there or not.
using Reports = std::function<void(const std::string& line)>;

struct Victim {
  explicit Victim(const std::filesystem::path& file)
      : database(platform::WindowsPath(file.string())) {
    machine.AddIpFilterDriver();
    machine.AddDriver(L"QGIpHook", L"QGIpHook");
    machine.Interfaces().Set({platform::SimulatedCard(1, kCard)});
    database.DbOpen();
  }

  platform::SimulatedMachine machine;
  Database database;
  Settings settings{database};
};

// Reports the state, the start date and the seconds of sessions.
void LogSessions(Victim& victim, const Reports& report, int round) {
  // Every session of every victim has a start date of its own.
  victim.machine.Time().SetLocalTime(2005, 1, 1 + round, 0, 0, 0);
  const auto users = std::make_shared<UserCollection>(LogonSystem::kNone, victim.database);
  users->Add(User(L"User"));
  NamedIdentity identity;
  RecordingIndicator indicator;
  MessageCatalogue catalogue;
  WeekCalendar calendar;
  LogonSession logon(victim.settings, identity);
  SessionLog session({victim.database, victim.settings, catalogue, calendar, logon, indicator});
  logon.SetUsers(users);
  logon.SetSessionControl(&session);
  session.RecoverSessions();
  while (true) {
    logon.LogOn(L"");
    const std::string start = platform::Utf8(FormatTimestamp(session.StartDate()));
    std::string seconds;
    for (int cycle = 0; cycle < kCyclesPerSession; ++cycle) {
      victim.machine.Time().Advance(kCycle);
      victim.machine.Interfaces().Count(kCard, 1000, 100);
      seconds = std::to_string(session.SecondsOnline());
      session.RunEnforcementCycle();
      report("running|" + start + "|" + seconds);
    }
    logon.LogOff(1);
    report("ended|" + start + "|" + seconds);
    victim.machine.Time().Advance(kCycle);
  }
}

// Reports the number of each save; every user carries the number of the save that wrote it.
void SaveUsers(Victim& victim, const Reports& report, int) {
  UserCollection users(LogonSystem::kNone, victim.database);
  for (int i = 0; i < kUsers; ++i)
    users.Add(User(L"user " + std::to_wstring(i)));
  std::int32_t number = users.Find(L"user 0")->TimeLimit().amount;
  while (true) {
    ++number;
    std::vector<User> edited;
    for (const std::wstring& name : users.SortedNames())
      edited.emplace_back(*users.Find(name)).SetTimeLimit({false, number, LimitPeriod::kDay});
    if (!users.ReplaceAllStored(std::move(edited))) return;
    report("saved||" + std::to_string(number));
  }
}

// Reports the number of each setup, which is the edition of the users. The logon systems alternate,
// and every user of the chosen one carries the number of the setup that wrote it.
void StoreSetups(Victim& victim, const Reports& report, int) {
  while (true) {
    WizardState wizard(victim.database);
    const std::wstring edition = victim.settings.GetSetting(SettingKey::kUsersEdition, L"0");
    const auto number = static_cast<std::int32_t>(SettingNumber(edition)) + 1;
    wizard.ChooseType(false);
    wizard.ChooseSystem(number % 2 == 0 ? LogonSystem::kWindows : LogonSystem::kQuillgate);
    for (int i = 0; i < kUsers; ++i) {
      User user(L"user " + std::to_wstring(i));
      user.SetTimeLimit({false, number, LimitPeriod::kDay});
      if (!wizard.Users().Replace(user)) wizard.Users().Add(user);
    }
    if (!wizard.Store(victim.settings)) return;
    report("set up||" + std::to_string(number));
  }
}

// Reported sessions that are not stored once, with at least the seconds that were reported, and as
// finished with exactly these once their end was.
constexpr const char* kLostSessions = R"(
  SELECT * FROM
    (SELECT Start, MAX(Number + 0) AS Least, MAX(State = 'ended') AS Ended
       FROM Reported GROUP BY Start)
    LEFT JOIN
    (SELECT StartDate, COUNT(*) AS Entries, MAX(Seconds + 0) AS Stored, MAX(Finished) AS Finished
       FROM (SELECT StartDate, Seconds, 1 AS Finished FROM ConnLog
             UNION ALL SELECT StartDate, Seconds, 0 FROM CrashLog) GROUP BY StartDate)
    ON Start = StartDate
    WHERE Entries IS NOT 1 OR Stored < Least OR (Ended AND NOT (Finished AND Stored = Least)))";

// The table unless it has all 25 users of one save: the last one that was reported or the next.
constexpr const char* kLostUsers = R"(
  SELECT * FROM
    (SELECT COUNT(*) AS Entries, MIN(TimeLimit + 0) AS Oldest, MAX(TimeLimit + 0) AS Newest
       FROM Users_None),
    (SELECT MAX(Number + 0) AS Saved FROM Reported)
    WHERE Entries <> 25 OR Oldest <> Newest OR Oldest NOT BETWEEN Saved AND Saved + 1)";

// The configuration unless logon system and users are those of one setup: the last one that was
// reported or the next.
constexpr const char* kLostSetup = R"(
  SELECT * FROM
    (SELECT (SELECT Value FROM Settings WHERE Key = '845') AS System,
            (SELECT Value + 0 FROM Settings WHERE Key = '60917') AS Edition,
            (SELECT MAX(Number + 0) FROM Reported) AS Saved),
    (SELECT 'QUILLGATE' AS Owner, COUNT(*) AS Entries, MIN(TimeLimit + 0) AS Oldest,
            MAX(TimeLimit + 0) AS Newest FROM Users_Quillgate
     UNION ALL
     SELECT 'WINDOWS', COUNT(*), MIN(TimeLimit + 0), MAX(TimeLimit + 0) FROM Users_Windows)
    WHERE Owner = CASE Edition % 2 WHEN 0 THEN 'WINDOWS' ELSE 'QUILLGATE' END
      AND (System IS NOT Owner OR Entries <> 25 OR Oldest IS NOT Edition OR
           Newest IS NOT Edition OR Edition NOT BETWEEN Saved AND Saved + 1))";

// What a victim does, what of it is lost (nothing may be), and whether it did enough to tell.
struct KillPoint {
  const char* name;
  void (*work)(Victim& victim, const Reports& report, int round);
  const char* lost;
  const char* enough;
};

constexpr KillPoint kKillPoints[] = {
    {"Sessions", LogSessions, kLostSessions, "SELECT MAX(State = 'ended') FROM Reported"},
    {"Users", SaveUsers, kLostUsers, "SELECT MAX(Number + 0) > 100 FROM Reported"},
    {"Setups", StoreSetups, kLostSetup, "SELECT MAX(Number + 0) > 100 FROM Reported"},
};

class Kills : public testing::TestWithParam<KillPoint> {
 protected:
  void SetUp() override { lab::WriteFile(ReportFile(), ""); }

  std::filesystem::path ReportFile() const { return folder_.Path() / "reports"; }

  std::string Ask(const std::string& sql) const {
    return folder_.StockSqlite(
        "CREATE TEMP TABLE Reported (State, Start, Number);"
        "\n.import --schema temp reports Reported\n" +
        sql + ";");
  }

  // Starts a victim, and kills it some time after its first report.
  void KillOne(int round, std::chrono::microseconds after) const {
    const auto before = std::filesystem::file_size(ReportFile());
    const pid_t victim = ::fork();
    if (victim == 0) {
      RunVictim(round);
      ::_exit(1);
    }
    for (int i = 0; i < 20'000 && std::filesystem::file_size(ReportFile()) == before; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    std::this_thread::sleep_for(after);
    ::kill(victim, SIGKILL);
    int status = 0;
    ::waitpid(victim, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself";
  }

  lab::DatabaseFolder folder_;

 private:
  void RunVictim(int round) const {
    ::setenv("TMPDIR", folder_.Path().c_str(), 1);
    const platform::FileDescriptor file(
        ::open(ReportFile().c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
    const auto report = [&file](const std::string& line) {
      const std::string text = line + "\n";
      if (::write(file.Get(), text.data(), text.size()) < 0) std::abort();
    };
    try {
      Victim victim(folder_.File());
      GetParam().work(victim, report, round);
    } catch (const DBerror& error) {
      std::fprintf(stderr, "victim: %s\n", platform::Utf8(error.Message()).c_str());
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Of, Kills, testing::ValuesIn(kKillPoints),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_P(Kills, LoseNothingThatWasDone) {
  const unsigned seed = std::random_device()();
  std::printf("seed %u\n", seed);
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> microseconds(0, 40'000);
  for (int round = 0; round < kKills && !HasFailure(); ++round) {
    KillOne(round, std::chrono::microseconds(microseconds(random)));
    EXPECT_EQ(Ask("PRAGMA integrity_check"), "ok");
    EXPECT_EQ(Ask(GetParam().lost), "") << "lost in round " << round;
  }
  EXPECT_EQ(Ask(GetParam().enough), "1") << "the victims hardly did anything";
}

}  // namespace
}  // namespace quillgate
