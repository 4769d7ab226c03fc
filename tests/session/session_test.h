// What the tests of this folder share: a machine with both drivers and one card, a database, one
// user named Anna under the QUILLGATE system, and an indicator that remembers what it was told.
#pragma once

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "accounts/no_identity.h"
#include "platform/testing/simulated_machine.h"
#include "session/session_log.h"

namespace quillgate {

class RecordingIndicator final : public GateIndicator {
 public:
  struct Balloon {
    std::wstring title;
    std::wstring text;
    BalloonIcon icon;
    bool operator==(const Balloon&) const = default;
  };

  void SetIcon(GateIcon icon) override { icons.push_back(icon); }
  void SetTip(const std::wstring& text) override { tip = text; }
  void Show() override { shown = true; }
  void ShowMessage(const std::wstring& text, const std::wstring& title, BalloonIcon icon,
                   int kind) override {
    balloons.push_back({title, text, icon});
    EXPECT_EQ(kind, 0);
  }
  bool Lock() override { return false; }
  void Unlock() override {}

  std::vector<GateIcon> icons;
  std::wstring tip;
  std::vector<Balloon> balloons;
  bool shown = false;
};

// Lets the user of that name on; nobody when it is empty.
class ScriptedPrompts final : public LogonPrompts {
 public:
  std::optional<std::wstring> AskLogon(LogonSystem, const LogonCandidates&) override {
    return name.empty() ? std::nullopt : std::optional(name);
  }
  std::optional<std::wstring> AskFirstUserName() override { return {}; }
  void TellFirstUserMade() override {}

  std::wstring name = L"Anna";
};

class SessionTest : public testing::Test {
 protected:
  static constexpr DWORD kEnableCode = 0x939C2098;
  static constexpr DWORD kDisableCode = 0x939C2094;
  static constexpr DWORD kAllowLocalCode = 0x939C209C;
  static constexpr DWORD kBlockLocalCode = 0x939C20A0;

  SessionTest() {
    machine_.Interfaces().Set({platform::SimulatedCard(2, L"eth0")});
    settings_.SetSetting(SettingKey::kLogonSystem, L"QUILLGATE");
    users_ = std::make_shared<UserCollection>(LogonSystem::kQuillgate, database_);
    users_->Add(User(L"Anna"));
    logon_.SetPrompts(&prompts_);
    logon_.SetUsers(users_);
    MakeSession();
  }
  ~SessionTest() override { logon_.SetSessionControl(nullptr); }

  void MakeSession() {
    session_ = std::make_unique<SessionLog>(
        SessionSurroundings{database_, settings_, catalogue_, calendar_, logon_, indicator_});
    logon_.SetSessionControl(session_.get());
  }

  // What a page does with Anna.
  void Edit(const std::function<void(User&)>& edit) {
    User anna = *users_->Find(L"Anna");
    edit(anna);
    ASSERT_TRUE(users_->Replace(std::move(anna)));
  }
  void LimitTime(const User::Limit& limit) {
    Edit([&](User& anna) { anna.SetTimeLimit(limit); });
  }
  void LimitDownload(const User::Limit& limit) {
    Edit([&](User& anna) { anna.SetDownloadLimit(limit); });
  }
  void BlockHour(std::size_t hour, bool blocked = true) {
    Edit([&](User& anna) {
      HoursTable hours = anna.ConnectHours();
      hours.at(hour) = blocked;
      anna.SetConnectHours(hours);
    });
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

  void Pass(std::chrono::milliseconds time) { machine_.Time().Advance(time); }
  void Receive(std::uint64_t bytes) { machine_.Interfaces().Count(L"eth0", bytes, 0); }

  DbRows Rows(const std::wstring& table) {
    DbRows rows;
    database_.DbQuery(L"SELECT * FROM " + table + L";", rows);
    return rows;
  }
  void Insert(const std::wstring& table, const DbRow& row) {
    std::wstring values;
    for (const std::wstring& value : row)
      values += (values.empty() ? L"'" : L", '") + value + L"'";
    database_.DbExecute(L"INSERT INTO " + table + L" VALUES (" + values + L");");
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

  // From now on, until Unlock, the file is in use whenever it is asked, as by another process: the
  // lock is on every lock byte of the write-ahead log's index.
  void LockDatabase() {
    constexpr off_t kFirstLock = 120;
    constexpr off_t kLocks = 8;
    const std::string index = (machine_.ProgramFolder() / "quillgate.dat-shm").native();
    otherProcess_ = ::open(index.c_str(), O_RDWR | O_CLOEXEC);
    struct flock range {};
    range.l_type = F_WRLCK;
    range.l_start = kFirstLock;
    range.l_len = kLocks;
    ASSERT_EQ(::fcntl(otherProcess_, F_OFD_SETLK, &range), 0);
  }
  void UnlockDatabase() { ::close(otherProcess_); }

  platform::SimulatedMachine machine_;
  std::shared_ptr<platform::RecordingDevice> filter_ = machine_.AddIpFilterDriver();
  std::shared_ptr<platform::RecordingDevice> hook_ = machine_.AddDriver(L"QGIpHook", L"QGIpHook");
  Database database_;
  Settings settings_{database_};
  MessageCatalogue catalogue_;
  WeekCalendar calendar_;
  ScriptedPrompts prompts_;
  NoIdentity identity_;
  LogonSession logon_{settings_, identity_};
  RecordingIndicator indicator_;
  std::shared_ptr<UserCollection> users_;
  std::unique_ptr<SessionLog> session_;
  int otherProcess_ = -1;
};

}  // namespace quillgate
