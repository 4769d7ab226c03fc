#include "system/kill_victim.h"

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "accounts/logon_session.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/path.h"
#include "platform/testing/simulated_machine.h"
#include "session/session_log.h"
#include "session/silent_indicator.h"

namespace quillgate {
namespace {

constexpr int kUsers = 25;
constexpr int kCyclesPerSession = 4;
constexpr std::chrono::seconds kCycle{20};
constexpr wchar_t kCard[] = L"card";

class Reports {
 public:
  explicit Reports(const char* file)
      : file_(::open(file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600)) {}
  ~Reports() { ::close(file_); }
  Reports(const Reports&) = delete;
  Reports& operator=(const Reports&) = delete;

  // In one write, so that a report is there or not.
  void Say(const std::string& line) {
    const std::string text = line + "\n";
    if (::write(file_, text.data(), text.size()) < 0) std::abort();
  }

 private:
  int file_;
};

class FixedIdentity final : public WindowsIdentity {
 public:
  std::wstring UserName() override { return L"anna"; }
};

struct Victim {
  explicit Victim(const std::wstring& path) : database(path), settings(database) {
    machine.AddIpFilterDriver();
    machine.AddDriver(L"QGIpHook", L"QGIpHook");
    machine.Interfaces().Set({platform::SimulatedCard(1, kCard)});
    database.DbOpen();
    settings.SetSetting(SettingKey::kLogonSystem, L"WINDOWS");
  }

  platform::SimulatedMachine machine;
  Database database;
  Settings settings;
};

void Report(Reports& reports, const char* state, const SessionLog& session, std::uint32_t seconds) {
  reports.Say(std::string(state) + "|" + platform::Utf8(FormatTimestamp(session.StartDate())) +
              "|" + std::to_string(seconds));
}

[[noreturn]] void LogSessions(Victim& victim, Reports& reports, int round) {
  // Every session of every victim has a start date of its own.
  victim.machine.Time().SetLocalTime(2005, 1, 1 + round, 0, 0, 0);
  const auto users = std::make_shared<UserCollection>(LogonSystem::kWindows, victim.database);
  users->Add(User(L"anna"));
  FixedIdentity identity;
  SilentIndicator indicator;
  MessageCatalogue catalogue;
  WeekCalendar calendar;
  LogonSession logon(victim.settings, identity);
  SessionLog session({victim.database, victim.settings, catalogue, calendar, logon, indicator});
  logon.SetUsers(users);
  logon.SetSessionControl(&session);
  session.RecoverSessions();
  while (true) {
    logon.LogOn(L"");
    std::uint32_t seconds = 0;
    for (int cycle = 0; cycle < kCyclesPerSession; ++cycle) {
      victim.machine.Time().Advance(kCycle);
      victim.machine.Interfaces().Count(kCard, 1000, 100);
      seconds = session.SecondsOnline();
      session.RunEnforcementCycle();
      Report(reports, "running", session, seconds);
    }
    logon.LogOff(1);
    Report(reports, "ended", session, seconds);
    victim.machine.Time().Advance(kCycle);
  }
}

[[noreturn]] void SaveUsers(Victim& victim, Reports& reports) {
  UserCollection users(LogonSystem::kWindows, victim.database);
  for (int i = 0; i < kUsers; ++i)
    users.Add(User(L"user " + std::to_wstring(i)));
  std::int32_t number = users.Find(L"user 0")->TimeLimit().amount;
  while (true) {
    ++number;
    std::vector<User> edited;
    for (const std::wstring& name : users.SortedNames())
      edited.emplace_back(*users.Find(name)).SetTimeLimit({false, number, LimitPeriod::kDay});
    if (!users.ReplaceAllStored(std::move(edited))) std::abort();
    reports.Say("saved|" + std::to_string(number));
  }
}

}  // namespace

int RunVictim(int wordCount, char** words) {
  if (wordCount != 4) return 1;
  const std::string kind = words[0];
  try {
    Victim victim(platform::WindowsPath(words[1]));
    Reports reports(words[2]);
    if (kind == "sessions") LogSessions(victim, reports, std::atoi(words[3]));
    if (kind == "users") SaveUsers(victim, reports);
  } catch (const DBerror& error) {
    std::fprintf(stderr, "victim: %s\n", platform::Utf8(error.Message()).c_str());
  } catch (const std::exception& error) {
    std::fprintf(stderr, "victim: %s\n", error.what());
  }
  return 1;
}

}  // namespace quillgate
