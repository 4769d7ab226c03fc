// What the tests of the connection sheet share: a machine with both drivers and one card, Anna as
// the user of the QUILLGATE system, and the session object.
#pragma once

#include <memory>

#include "accounts/no_identity.h"
#include "frame/desktop/frame_test.h"
#include "session/session_log.h"
#include "session/silent_indicator.h"
#include "ui/connection_sheet.h"

namespace quillgate {

// Lets Anna on.
class AnnaPrompts final : public LogonPrompts {
 public:
  std::optional<std::wstring> AskLogon(LogonSystem, const LogonCandidates&) override {
    return L"Anna";
  }
  std::optional<std::wstring> AskFirstUserName() override { return {}; }
  void TellFirstUserMade() override {}
};

class ConnectionTest : public FrameTest {
 protected:
  ConnectionTest() {
    platform::NetworkInterface card = platform::SimulatedCard(2, L"eth0");
    card.description = L"Ethernet card";
    machine_.Interfaces().Set({card});
    machine_.AddIpFilterDriver();
    machine_.AddDriver(L"QGIpHook", L"QGIpHook");
    calendar_.SetFirstDayOfWeek(1);
    UseSystem(L"QUILLGATE");
    users_->Add(User(L"Anna"));
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

  WeekCalendar calendar_;
  NoIdentity identity_;
  AnnaPrompts prompts_;
  SilentIndicator indicator_;
  LogonSession logon_{settings_, identity_};
  std::shared_ptr<UserCollection> users_;
  std::unique_ptr<SessionLog> session_;
  ConnectionSheet sheet_{{ui_, settings_, database_, calendar_, logon_}};
};

}  // namespace quillgate
