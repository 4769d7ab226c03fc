// Measures the settings sheet on a desktop without a screen: opening and closing it with few users
// and with many, and one apply of all pages. The bare alternative of an apply is one transaction of
// a single setting.
#include <benchmark/benchmark.h>

#include "settings/settings_sheet.h"
#include "settings/stored_together.h"
#include "sheet_office.h"

namespace quillgate {
namespace {

// An administrator and so many users.
class Office final : public SheetOffice, public LogonSystemControl {
 public:
  explicit Office(int users) {
    std::vector<std::wstring> names;
    for (int i = 1; i < users; ++i)
      names.push_back(L"user" + std::to_wstring(i));
    UseSystem(L"QUILLGATE", names, {L"Anna"});
    users_->SaveAll();
    logon_.LogOn({});
  }

  std::shared_ptr<UserCollection> Users() const override { return users_; }
  bool Switch(const std::function<bool()>& /*store*/) override { return false; }

  // Milliseconds until the sheet has been closed by the timer procedure.
  double Open(TIMERPROC user) {
    return OpenFor(user, [this] {
      SettingsSheet({ui_, catalogue_, database_, settings_, calendar_, logon_, identity_, *this})
          .Open(*session_);
    });
  }
  void StoreOne() {
    StoredTogether(database_, [this] { settings_.SetSetting(SettingKey::kLanguage, L"9"); });
  }
};

double applySeconds = 0;

void CALLBACK ApplySheet(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  const HWND sheet = AwaitedSheet(timer);
  if (sheet == nullptr) return;
  applySeconds = bench::MedianSecondsOf(50, [sheet] { ::SendMessageW(sheet, PSM_APPLY, 0, 0); });
  PropSheet_PressButton(sheet, PSBTN_CANCEL);
}

void OpenSheet(benchmark::State& state) {
  Office office(static_cast<int>(state.range(0)));
  std::vector<double> spent;
  for (auto _ : state)
    spent.push_back(office.Open(CloseSheet));
  state.counters["open_and_close_ms"] = bench::Median(spent);
}
BENCHMARK(OpenSheet)->Arg(10)->Arg(10'000)->Iterations(20)->Unit(benchmark::kMillisecond);

void ApplyAll(benchmark::State& state) {
  Office office(10);
  for (auto _ : state)
    office.Open(ApplySheet);
  state.counters["apply_ms"] = applySeconds * 1000;
  state.counters["to_bare_transaction"] =
      applySeconds / bench::MedianSecondsOf(50, [&] { office.StoreOne(); });
}
BENCHMARK(ApplyAll)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillgate
