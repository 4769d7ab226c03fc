// Measures the settings sheet on a desktop without a screen: opening and closing it with few users
// and with many, and one apply of all pages. The bare alternative of an apply is one transaction of
// a single setting.
#include <windows.h>

#include <benchmark/benchmark.h>
#include <prsht.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "frame/help_system.h"
#include "platform/kit/hidden_window.h"
#include "program/program_test.h"
#include "program/recording_indicator.h"
#include "settings/settings_sheet.h"
#include "settings/stored_together.h"

namespace quillgate {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

double Median(std::vector<double>& values) {
  std::ranges::sort(values);
  return values.empty() ? 0 : values[values.size() / 2];
}

// An administrator and so many users.
class Office final : public LogonSystemControl {
 public:
  explicit Office(int users) {
    machine_.UseDesktop();
    keepAlive_.emplace();
    machine_.Interfaces().Set({platform::SimulatedCard(2, L"eth0")});
    machine_.AddIpFilterDriver();
    machine_.AddDriver(L"QGIpHook", L"QGIpHook");
    settings_.SetSetting(SettingKey::kLogonSystem, L"QUILLGATE");
    users_ = std::make_shared<UserCollection>(LogonSystem::kQuillgate, database_);
    User anna(L"Anna");
    anna.AssignAdministrator(true);
    users_->Add(std::move(anna));
    for (int i = 1; i < users; ++i)
      users_->Add(User(L"user" + std::to_wstring(i)));
    users_->SaveAll();
    logon_.SetUsers(users_);
    prompts_.name = L"Anna";
    logon_.SetPrompts(&prompts_);
    session_ = std::make_unique<SessionLog>(
        SessionSurroundings{database_, settings_, catalogue_, calendar_, logon_, indicator_});
    logon_.SetSessionControl(session_.get());
    logon_.LogOn({});
  }
  ~Office() override { logon_.SetSessionControl(nullptr); }
  Office(const Office&) = delete;
  Office& operator=(const Office&) = delete;

  std::shared_ptr<UserCollection> Users() const override { return users_; }
  bool Switch(const std::function<bool()>& /*store*/) override { return false; }

  // Milliseconds from the call until the sheet has been closed by the timer procedure.
  double Open(TIMERPROC procedure) {
    constexpr UINT kTimerMilliseconds = 10;
    ::SetTimer(nullptr, 0, kTimerMilliseconds, procedure);
    machine_.Time().Advance(std::chrono::milliseconds(kTimerMilliseconds));
    const auto start = Clock::now();
    SettingsSheet({ui_, catalogue_, database_, settings_, calendar_, logon_, identity_, *this})
        .Open(*session_);
    return Milliseconds(Clock::now() - start).count();
  }
  double StoreOne() {
    const auto start = Clock::now();
    StoredTogether(database_, [this] { settings_.SetSetting(SettingKey::kLanguage, L"9"); });
    return Milliseconds(Clock::now() - start).count();
  }

 private:
  platform::SimulatedMachine machine_;
  std::optional<HiddenWindow> keepAlive_;
  Database database_;
  Settings settings_{database_};
  MessageCatalogue catalogue_;
  WeekCalendar calendar_;
  NamedIdentity identity_;
  NamedPrompts prompts_;
  RecordingIndicator indicator_;
  LogonSession logon_{settings_, identity_};
  HelpSystem help_;
  StopRequest stop_;
  UiSurroundings ui_{catalogue_, help_, stop_};
  std::shared_ptr<UserCollection> users_;
  std::unique_ptr<SessionLog> session_;
};

double applyMilliseconds = 0;

void CALLBACK CloseSheet(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  const HWND sheet = ::GetActiveWindow();
  if (sheet == nullptr) return;
  ::KillTimer(nullptr, timer);
  PropSheet_PressButton(sheet, PSBTN_CANCEL);
}

void CALLBACK ApplySheet(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  const HWND sheet = ::GetActiveWindow();
  if (sheet == nullptr) return;
  ::KillTimer(nullptr, timer);
  std::vector<double> spent;
  for (int i = 0; i < 50; ++i) {
    const auto start = Clock::now();
    ::SendMessageW(sheet, PSM_APPLY, 0, 0);
    spent.push_back(Milliseconds(Clock::now() - start).count());
  }
  applyMilliseconds = Median(spent);
  PropSheet_PressButton(sheet, PSBTN_CANCEL);
}

void OpenSheet(benchmark::State& state) {
  Office office(static_cast<int>(state.range(0)));
  std::vector<double> spent;
  for (auto _ : state)
    spent.push_back(office.Open(CloseSheet));
  state.counters["open_and_close_ms"] = Median(spent);
}
BENCHMARK(OpenSheet)->Arg(10)->Arg(10'000)->Iterations(20)->Unit(benchmark::kMillisecond);

void ApplyAll(benchmark::State& state) {
  Office office(10);
  std::vector<double> bare;
  for (auto _ : state)
    office.Open(ApplySheet);
  for (int i = 0; i < 50; ++i)
    bare.push_back(office.StoreOne());
  state.counters["apply_ms"] = applyMilliseconds;
  state.counters["to_bare_transaction"] = applyMilliseconds / Median(bare);
}
BENCHMARK(ApplyAll)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillgate
