// What the tests of the tray share: a machine with users of the QUILLGATE system, a logon that the
// test decides, and parts to open that are remembered.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/testing/simulated_machine.h"
#include "ui/tray_controller.h"

namespace quillgate {

class NamedIdentity final : public WindowsIdentity {
 public:
  std::wstring UserName() override { return name; }

  std::wstring name;
};

// Lets on whom the test names, nobody when that is empty.
class NamedPrompts final : public LogonPrompts {
 public:
  std::optional<std::wstring> AskLogon(LogonSystem, const LogonCandidates&) override {
    return name.empty() ? std::nullopt : std::optional(name);
  }
  std::optional<std::wstring> AskFirstUserName() override { return {}; }
  void TellFirstUserMade() override {}

  std::wstring name;
};

class TrayTest : public testing::Test, protected LogonControl {
 protected:
  TrayTest() {
    catalogue_.SetInterfaceLanguage(1033);
    logon_.SetPrompts(&prompts_);
    UseSystem(L"QUILLGATE");
  }

  // Anna is a regular user of the system, Bo an administrator.
  void UseSystem(const wchar_t* word) {
    settings_.SetSetting(SettingKey::kLogonSystem, word);
    const LogonSystem system = CurrentLogonSystem(settings_);
    users_ = std::make_shared<UserCollection>(system, database_);
    if (system == LogonSystem::kNone) {
      EnsureBuiltInUsers(*users_);
    } else {
      users_->Add(User(L"Anna"));
      User bo(L"Bo");
      bo.AssignAdministrator(true);
      users_->Add(std::move(bo));
    }
    logon_.SetUsers(users_);
  }
  // Not by the tray.
  void LogOn(const std::wstring& name) {
    Expect(name);
    logon_.LogOn(name);
  }
  // Whoever is asked or looked for from now on is of that name.
  void Expect(const std::wstring& name) {
    prompts_.name = name;
    identity_.name = name;
  }
  void AdministratorsOnly() { settings_.SetSetting(SettingKey::kStatisticsForAdmins, kYes); }

  TraySurroundings Surroundings() {
    const auto opener = [this](const char* what) {
      return [this, what] {
        done.push_back(what);
        if (whileOpen) whileOpen();
      };
    };
    TraySurroundings surroundings{catalogue_, settings_, logon_, *this, help_, stop_, {}};
    surroundings.openers = {opener("connection"), opener("settings"), opener("statistics"),
                            opener("about"), opener("stop")};
    return surroundings;
  }

  bool LogOnFromTray(std::wstring_view name) override {
    done.push_back("log on " + std::string(name.begin(), name.end()));
    return logon_.LogOn(name);
  }
  void LogOffFromTray() override {
    done.push_back("log off");
    logon_.LogOff(1);
  }

  // What the tray did, in order.
  std::vector<std::string> done;
  // Happens while a part is open.
  std::function<void()> whileOpen;

  platform::SimulatedMachine machine_;
  Database database_;
  Settings settings_{database_};
  MessageCatalogue catalogue_;
  HelpSystem help_;
  StopRequest stop_;
  NamedIdentity identity_;
  NamedPrompts prompts_;
  LogonSession logon_{settings_, identity_};
  std::shared_ptr<UserCollection> users_;
};

}  // namespace quillgate
