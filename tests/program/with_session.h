// The session object for a fixture with users: on a machine with both drivers and one card, with
// Anna as the one who logs on under the QUILLGATE system.
#pragma once

#include <memory>

#include "program/program_test.h"
#include "program/recording_indicator.h"
#include "session/session_log.h"

namespace quillgate {

template <class Fixture>
class WithSession : public Fixture {
 protected:
  using Fixture::catalogue_;
  using Fixture::database_;
  using Fixture::logon_;
  using Fixture::machine_;
  using Fixture::settings_;

  WithSession() {
    machine_.AddIpFilterDriver();
    machine_.Interfaces().Set({platform::SimulatedCard(2, L"eth0")});
    this->UseSystem(L"QUILLGATE", {L"Anna"});
    this->prompts_.name = L"Anna";
    MakeSession();
  }
  ~WithSession() override { logon_.SetSessionControl(nullptr); }

  void MakeSession() {
    session_ = std::make_unique<SessionLog>(
        SessionSurroundings{database_, settings_, catalogue_, calendar_, logon_, indicator_});
    logon_.SetSessionControl(session_.get());
  }

  void Pass(std::chrono::milliseconds time) { machine_.Time().Advance(time); }
  void Count(std::uint64_t received, std::uint64_t sent) {
    machine_.Interfaces().Count(L"eth0", received, sent);
  }

  std::shared_ptr<platform::RecordingDevice> hook_ = machine_.AddDriver(L"QGIpHook", L"QGIpHook");
  WeekCalendar calendar_;
  RecordingIndicator indicator_;
  std::unique_ptr<SessionLog> session_;
};

}  // namespace quillgate
