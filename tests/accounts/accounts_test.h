// What the tests of this folder share: a machine of their own with a database in its program
// folder, and a logon session over it.
#pragma once

#include <gtest/gtest.h>

#include <mutex>
#include <utility>

#include "accounts/logon_session.h"
#include "accounts/user_collection.h"
#include "platform/testing/simulated_machine.h"

namespace quillgate {

class AccountsTest : public testing::Test {
 protected:
  DbRows Query(const std::wstring& sql) {
    DbRows rows;
    database_.DbQuery(sql, rows);
    return rows;
  }

  // The ten columns of a user as the table holds them.
  void InsertRow(const std::wstring& table, const DbRow& row) {
    std::wstring values;
    for (const std::wstring& value : row)
      values += (values.empty() ? L"'" : L", '") + value + L"'";
    database_.DbExecute(L"INSERT INTO " + table + L" VALUES (" + values + L");");
  }

  static User MakeUser(const std::wstring& name, bool administrator = false) {
    User user(name);
    user.AssignAdministrator(administrator);
    return user;
  }

  platform::SimulatedMachine machine_;
  Database database_;
  Settings settings_{database_};
};

// Writes down whose session begins (+) and whose ends (-).
class RecordingControl final : public SessionControl {
 public:
  explicit RecordingControl(const LogonSession& session) : session_(session) {}

  void Reevaluate() override { Note(L"+"); }
  void EndSession() override {
    Note(L"-");
    if (fails) throw DBerror(L"disk full", 13);
  }
  std::vector<std::wstring> TakeLog() {
    const std::lock_guard lock(mutex_);
    return std::exchange(log_, {});
  }

  bool fails = false;

 private:
  void Note(const std::wstring& sign) {
    const auto user = session_.CurrentUser();
    const std::lock_guard lock(mutex_);
    log_.push_back(sign + (user == nullptr ? L"" : user->Name()));
  }

  const LogonSession& session_;
  std::mutex mutex_;
  std::vector<std::wstring> log_;
};

struct FakeIdentity final : WindowsIdentity {
  std::wstring UserName() override { return name; }
  std::wstring name;
};

class LogonTest : public AccountsTest {
 protected:
  LogonTest() { session_.SetSessionControl(&control_); }

  // A logon system by its word, with users of blank passwords.
  void Choose(std::wstring_view word, const std::vector<std::wstring>& names) {
    settings_.SetSetting(SettingKey::kLogonSystem, word);
    users_ = std::make_shared<UserCollection>(LogonSystemOf(word), database_);
    for (const std::wstring& name : names)
      users_->Add(MakeUser(name));
    session_.SetUsers(users_);
  }

  std::wstring CurrentName() const {
    const auto user = session_.CurrentUser();
    return user == nullptr ? L"(nobody)" : user->Name();
  }

  FakeIdentity identity_;
  LogonSession session_{settings_, identity_};
  RecordingControl control_{session_};
  std::shared_ptr<UserCollection> users_;
};

}  // namespace quillgate
