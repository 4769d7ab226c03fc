// What logon notification packages are told, also over the end of the process that tells them.
#include "platform/tools/winlogon/logon_keeper.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <winwlx.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/kernel/modules.h"
#include "platform/registry/registry_key.h"
#include "platform/testing/simulated_machine.h"

namespace {

using platform::SeatState;
using platform::winlogon::LogonEvent;
using platform::winlogon::LogonKeeper;
using platform::winlogon::NotifyPackages;

using Calls = std::vector<std::wstring>;

struct Killed {};

SeatState Seat(const std::wstring& user) {
  if (user.empty()) return {};
  return {{{L"session of " + user, user}}, L"session of " + user};
}

// One life of the process; it ends with the state, or in the call that kills it.
Calls Live(const std::wstring& boot, const std::wstring& user, const std::wstring& killingCall) {
  Calls calls;
  LogonKeeper keeper(boot, [&](LogonEvent event, const std::wstring& name) {
    constexpr const wchar_t* kEvents[] = {L"startup", L"logon ", L"logoff "};
    calls.push_back(kEvents[static_cast<int>(event)] + name);
    if (calls.back() == killingCall) throw Killed();
  });
  try {
    keeper.Start();
    keeper.Follow(Seat(user));
    keeper.Follow(Seat(user));
  } catch (const Killed&) {
  }
  return calls;
}

TEST(LogonKeeper, NoLogonAndNoLogoffIsLostWithTheProcess) {
  const platform::SimulatedMachine machine;
  const struct {
    const char* what;
    const wchar_t *boot, *user;
    Calls expected;
    const wchar_t* killingCall = L"";
  } lives[] = {
      {"started, killed in it", L"1", L"", {L"startup"}, L"startup"},
      {"started", L"1", L"", {L"startup"}},
      {"logon", L"1", L"anna", {L"logon anna"}},
      {"told already", L"1", L"anna", {}},
      {"switch", L"1", L"bo", {L"logoff anna", L"logon bo"}},
      {"killed in a logon", L"1", L"cia", {L"logoff bo", L"logon cia"}, L"logon cia"},
      {"who has left since", L"1", L"", {L"logoff cia"}},
      {"killed in a logon", L"1", L"dag", {L"logon dag"}, L"logon dag"},
      {"who is still there", L"1", L"dag", {L"logon dag"}},
      {"killed in a logoff", L"1", L"eva", {L"logoff dag"}, L"logoff dag"},
      {"is told again", L"1", L"eva", {L"logoff dag", L"logon eva"}},
      {"killed in a logoff", L"1", L"", {L"logoff eva"}, L"logoff eva"},
      {"who has come back", L"1", L"eva", {L"logon eva"}},
      {"crash of the machine", L"2", L"", {L"startup"}},
      {"logon after it", L"2", L"eva", {L"logon eva"}},
  };
  for (const auto& [what, boot, user, expected, killingCall] : lives)
    EXPECT_EQ(Live(boot, user, killingCall), expected) << what;
}

Calls told;

void WINAPI OnLogon(PWLX_NOTIFICATION_INFO info) {
  told.emplace_back(info->UserName);
}
void WINAPI Throw(PWLX_NOTIFICATION_INFO) {
  throw 1;
}

TEST(NotifyPackagesTest, APackageThatFailsDoesNotKeepTheOthersFromBeingTold) {
  const platform::SimulatedMachine machine;
  platform::RegisterBuiltInModule(L"package.dll", {{"OnLogon", reinterpret_cast<FARPROC>(OnLogon)},
                                                   {"Throw", reinterpret_cast<FARPROC>(Throw)}});
  const std::pair<std::wstring, std::wstring> entries[] = {{L"missing.dll", L"OnLogon"},
                                                           {L"package.dll", L"Missing"},
                                                           {L"package.dll", L"Throw"},
                                                           {L"package.dll", L"OnLogon"}};
  for (const auto& [file, function] : entries) {
    const std::wstring path =
        L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon\\Notify\\" + file + function;
    const Key key(path.c_str());
    key.SetText(L"DllName", file);
    key.SetText(L"Logon", function);
  }
  NotifyPackages packages;
  for (const LogonEvent event : {LogonEvent::kStartup, LogonEvent::kLogon, LogonEvent::kLogoff})
    packages.Notify(event, L"anna");
  EXPECT_EQ(told, Calls{L"anna"});
  platform::UnregisterBuiltInModule(L"package.dll");
}

}  // namespace
