// A program on the simulated machine, for the tests of the rooms that know users: its database and
// settings, the users of a logon system, and a logon that the test decides.
#pragma once

#include <windows.h>

#include <gmock/gmock.h>

#include <winreg.h>

#include <memory>
#include <string>
#include <vector>

#include "accounts/logon_session.h"
#include "platform/testing/simulated_machine.h"
#include "text/message_catalogue.h"

namespace quillgate {

// The user of that name is logged on to the machine; nobody when it is empty.
struct NamedIdentity final : WindowsIdentity {
  std::wstring UserName() override { return name; }

  std::wstring name;
};

// Lets the user of that name on; nobody when it is empty.
struct NamedPrompts final : LogonPrompts {
  std::optional<std::wstring> AskLogon(LogonSystem, const LogonCandidates&) override {
    return name.empty() ? std::nullopt : std::optional(name);
  }
  std::optional<std::wstring> AskFirstUserName() override { return {}; }
  void NotifyFirstUserMade() override {}

  std::wstring name;
};

class MachineTest : public testing::Test {
 protected:
  platform::SimulatedMachine machine_;
  Database database_;
  Settings settings_{database_};
  MessageCatalogue catalogue_;
};

// Users and their logon, for a fixture with a database and settings.
template <class Fixture>
class WithUsers : public Fixture {
 protected:
  using Fixture::database_;
  using Fixture::settings_;

  WithUsers() { logon_.SetPrompts(&prompts_); }

  static User Administrator(const std::wstring& name) {
    User user(name);
    user.AssignAdministrator(true);
    return user;
  }

  // A logon system by its word, with users of blank passwords besides the stored ones.
  void UseSystem(std::wstring_view word, const std::vector<std::wstring>& names,
                 const std::vector<std::wstring>& administrators = {}) {
    settings_.SetSetting(SettingKey::kLogonSystem, word);
    users_ = std::make_shared<UserCollection>(LogonSystemOf(word), database_);
    for (const std::wstring& name : names)
      users_->Add(User(name));
    for (const std::wstring& name : administrators)
      users_->Add(Administrator(name));
    logon_.SetUsers(users_);
  }
  // As the logon notification package does it, which lies beside the test program.
  static void RegisterLogonPackage() {
    HKEY key = nullptr;
    ::RegCreateKeyExW(HKEY_LOCAL_MACHINE,
                      L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon\\Notify\\qgwlnp",
                      0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
    ::RegCloseKey(key);
  }
  std::wstring LoggedOn() const {
    const auto user = logon_.CurrentUser();
    return user == nullptr ? L"(nobody)" : user->Name();
  }

  DbRows Query(const std::wstring& sql) {
    DbRows rows;
    database_.DbQuery(sql, rows);
    return rows;
  }
  DbRows Rows(const std::wstring& table) { return Query(L"SELECT * FROM " + table + L";"); }
  void Insert(const std::wstring& table, const DbRow& row) {
    std::wstring values;
    for (const std::wstring& value : row)
      values += (values.empty() ? L"'" : L", '") + value + L"'";
    database_.DbExecute(L"INSERT INTO " + table + L" VALUES (" + values + L");");
  }

  NamedPrompts prompts_;
  NamedIdentity identity_;
  LogonSession logon_{settings_, identity_};
  std::shared_ptr<UserCollection> users_;
};

using ProgramTest = WithUsers<MachineTest>;

}  // namespace quillgate
