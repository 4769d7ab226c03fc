// What the tests of the connection sheet share: a machine with both drivers and one card, Anna as
// the user of the QUILLGATE system, and the session object.
#pragma once

#include <memory>

#include "session/session_log.h"
#include "ui/callback_window.h"
#include "ui/connection_sheet.h"
#include "ui_desktop_test.h"

namespace quillgate {

class SilentIndicator final : public GateIndicator {
 public:
  void SetIcon(GateIcon) override {}
  void SetTip(const std::wstring&) override {}
  void Show() override {}
  void ShowMessage(const std::wstring&, const std::wstring&, BalloonIcon, int) override {}
  void Lock() override {}
  void Unlock() override {}
};

class UnknownIdentity final : public WindowsIdentity {
 public:
  std::wstring UserName() override { return {}; }
};

// Lets Anna on.
class AnnaPrompts final : public LogonPrompts {
 public:
  std::optional<std::wstring> AskLogon(LogonSystem, const LogonCandidates&) override {
    return L"Anna";
  }
  std::optional<std::wstring> AskFirstUserName() override { return {}; }
  void TellFirstUserMade() override {}
};

// Keeps the desktop from one dialog to the next, as the service's own hidden windows do.
class LastingWindow final : public CallbackWindow {
 private:
  LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
    return ::DefWindowProcW(window, message, wParam, lParam);
  }
};

class ConnectionTest : public UiDesktopTest {
 protected:
  ConnectionTest() {
    EXPECT_TRUE(lasting_.Create());
    platform::NetworkInterface card = platform::SimulatedCard(2, L"eth0");
    card.description = L"Ethernet card";
    machine_.Interfaces().Set({card});
    machine_.AddIpFilterDriver();
    machine_.AddDriver(L"QGIpHook", L"QGIpHook");
    calendar_.SetFirstDayOfWeek(1);
    UseSystem(L"QUILLGATE");
    users_->Add(std::make_shared<User>(L"Anna"));
    session_ = std::make_unique<SessionLog>(
        SessionSurroundings{database_, settings_, catalogue_, calendar_, logon_, indicator_});
    logon_.SetPrompts(&prompts_);
    logon_.SetSessionControl(session_.get());
  }
  ~ConnectionTest() override { logon_.SetSessionControl(nullptr); }

  void UseSystem(const wchar_t* word) {
    settings_.SetSetting(SettingKey::kLogonSystem, word);
    users_ = std::make_shared<UserCollection>(CurrentLogonSystem(settings_), database_);
    logon_.SetUsers(users_);
  }

  // A finished session of Anna's.
  void Finished(const wchar_t* seconds, const wchar_t* sent, const wchar_t* received,
                const wchar_t* start) {
    database_.DbExecute(std::wstring(L"INSERT INTO ConnLog VALUES ('Anna', '") + seconds + L"', '" +
                        sent + L"', '" + received + L"', '" + start + L"');");
  }
  void Pass(std::chrono::seconds time) { machine_.Time().Advance(time); }
  void Count(std::uint64_t received, std::uint64_t sent) {
    machine_.Interfaces().Count(L"eth0", received, sent);
  }

  LastingWindow lasting_;
  WeekCalendar calendar_;
  UnknownIdentity identity_;
  AnnaPrompts prompts_;
  SilentIndicator indicator_;
  LogonSession logon_{settings_, identity_};
  std::shared_ptr<UserCollection> users_;
  std::unique_ptr<SessionLog> session_;
  ConnectionSheet sheet_{{ui_, settings_, database_, calendar_, logon_}};
};

}  // namespace quillgate
