// What the tests of this folder share: a machine with both drivers and one card, and the process's
// set of objects on it, with the database open and the events of the service recorded.
#pragma once

#include <gmock/gmock.h>

#include <string>

#include "platform/testing/simulated_machine.h"
#include "service/process_objects.h"
#include "service/service_module.h"
#include "service/service_names.h"

namespace quillgate {

class ServiceTest : public testing::Test {
 protected:
  ServiceTest() {
    machine_.Interfaces().Set({platform::SimulatedCard(2, L"eth0")});
    objects_.GetDatabase().DbOpen();
    objects_.Events().SetRunningAsService(true);
  }
  // Whoever still sleeps on the machine's clock wakes, so that the objects can go.
  ~ServiceTest() override { machine_.Time().Release(); }

  void Set(SettingKey key, const wchar_t* value) { objects_.GetSettings().SetSetting(key, value); }
  std::wstring Setting(SettingKey key) { return objects_.GetSettings().GetSetting(key, L"-"); }

  void Execute(const std::wstring& sql) { objects_.GetDatabase().DbExecute(sql); }
  DbRows Query(const std::wstring& sql) {
    DbRows rows;
    objects_.GetDatabase().DbQuery(sql, rows);
    return rows;
  }

  // A user of the table, with the defaults of a new one.
  void AddUser(LogonSystem system, const std::wstring& name, const wchar_t* password = L"") {
    User user(name);
    user.SetPassword(password);
    EXPECT_TRUE(user.Save(UserTableOf(system), objects_.GetDatabase()));
  }
  // Anna is the one who is logged on to Windows, and a user of that system.
  void AddWindowsUser() {
    AddUser(LogonSystem::kWindows, L"Anna");
    Execute(L"CREATE TABLE WlNpData (Key, Value);");
    Execute(L"INSERT INTO WlNpData VALUES ('UserName', 'Anna');");
  }
  // Empty when nobody is logged on.
  std::wstring LoggedOn() {
    const auto user = objects_.Logon().CurrentUser();
    return user == nullptr ? std::wstring() : user->Name();
  }

  platform::SimulatedMachine machine_;
  std::shared_ptr<platform::RecordingDevice> filter_ = machine_.AddIpFilterDriver();
  std::shared_ptr<platform::RecordingDevice> hook_ = machine_.AddDriver(L"QGIpHook", L"QGIpHook");
  ProcessObjects objects_;
  ServiceModule module_{objects_};
};

}  // namespace quillgate
