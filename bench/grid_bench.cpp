// Measures the cost of the grid control through its window: storing and finding cells by message,
// painting a full screen of them, scrolling through them. The bare alternative of storing and
// finding is one map of texts by row and column.
#include <windows.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "grid/grid_messages.h"
#include "grid/grid_types.h"
#include "grid/grid_window.h"
#include "message_pump.h"
#include "platform/testing/simulated_machine.h"
#include "timing.h"

namespace quillgate {
namespace {

using bench::SecondsOf;

constexpr std::int32_t kRows = kGridMaxRows;
constexpr std::int32_t kCols = 24;
constexpr std::size_t kCells = std::size_t{kRows} * kCols;
constexpr unsigned kSeed = 20'050'314;

std::vector<GridCell> AllCells() {
  std::vector<GridCell> cells;
  cells.reserve(kCells);
  for (std::int32_t row = 1; row <= kRows; ++row) {
    for (std::int32_t col = 1; col <= kCols; ++col)
      cells.push_back({row, col});
  }
  return cells;
}

std::vector<GridCell> ShuffledCells() {
  std::vector<GridCell> cells = AllCells();
  std::ranges::shuffle(cells, std::mt19937(kSeed));
  return cells;
}

// All texts are different; every second one is a number.
std::vector<std::wstring> Texts() {
  std::vector<std::wstring> texts;
  texts.reserve(kCells);
  for (std::size_t number = 0; number < kCells; ++number)
    texts.push_back(number % 2 == 0 ? std::to_wstring(number) + L".5"
                                    : L"Text " + std::to_wstring(number));
  return texts;
}

// A grid as large as a screen, shown on a simulated desktop.
class Screen {
 public:
  Screen() {
    machine_.UseDesktop();
    RegisterGridClass(nullptr);
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = ::DefWindowProcW;
    windowClass.lpszClassName = L"GridBench";
    ::RegisterClassW(&windowClass);
    host_ = ::CreateWindowExW(0, L"GridBench", L"", WS_VISIBLE, 0, 0, kWidth, kHeight, nullptr,
                              nullptr, nullptr, nullptr);
    grid_ = ::CreateWindowExW(0, kGridClassName, L"", WS_CHILD | WS_VISIBLE, 0, 0, kWidth, kHeight,
                              host_, reinterpret_cast<HMENU>(UINT_PTR{500}), nullptr, nullptr);
    PumpMessages();
  }
  ~Screen() { ::DestroyWindow(host_); }
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageW(grid_, message, wParam, lParam);
  }
  LRESULT SendCell(UINT message, const GridCell& cell, const wchar_t* text = nullptr) const {
    return Send(message, reinterpret_cast<WPARAM>(&cell), reinterpret_cast<LPARAM>(text));
  }
  void Fill(const std::vector<GridCell>& cells, const std::vector<std::wstring>& texts) const {
    for (std::size_t i = 0; i < cells.size(); ++i)
      SendCell(GCM_SETCELL, cells[i], texts[i].c_str());
  }
  // One frame: scrolls, paints, and pumps the messages that follow.
  void Scroll(WORD request) const {
    Send(WM_VSCROLL, request);
    ::UpdateWindow(grid_);
    PumpMessages();
  }
  int FirstRow() const { return ::GetScrollPos(grid_, SB_VERT); }

 private:
  static constexpr int kWidth = 1920;
  static constexpr int kHeight = 1080;

  platform::SimulatedMachine machine_;
  HWND host_ = nullptr;
  HWND grid_ = nullptr;
};

using BareMap = std::map<long, std::wstring>;

long KeyOf(const GridCell& cell) {
  return static_cast<long>(cell.row) * (kGridMaxCols + 1) + cell.col;
}

BareMap FilledMap(const std::vector<GridCell>& cells, const std::vector<std::wstring>& texts) {
  BareMap map;
  for (std::size_t i = 0; i < cells.size(); ++i)
    map.insert_or_assign(KeyOf(cells[i]), texts[i]);
  return map;
}

void Store(benchmark::State& state, const std::vector<GridCell>& cells, bool growing) {
  const auto texts = Texts();
  for (auto _ : state) {
    const Screen screen;
    if (!growing) screen.Send(GCM_SETSIZE, kRows, kCols);
    const double spent = SecondsOf([&] { screen.Fill(cells, texts); });
    BareMap map;
    const double bare = SecondsOf([&] { map = FilledMap(cells, texts); });
    state.SetIterationTime(spent);
    state.counters["cells"] = static_cast<double>(cells.size());
    state.counters["to_map"] = spent / bare;
  }
}

void StoreInOrder(benchmark::State& state) {
  Store(state, AllCells(), false);
}
BENCHMARK(StoreInOrder)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

// The grid grows with each new row.
void StoreGrowing(benchmark::State& state) {
  Store(state, AllCells(), true);
}
BENCHMARK(StoreGrowing)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void StoreAtRandom(benchmark::State& state) {
  Store(state, ShuffledCells(), false);
}
BENCHMARK(StoreAtRandom)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void FindAtRandom(benchmark::State& state) {
  const auto cells = AllCells();
  const auto texts = Texts();
  const auto wanted = ShuffledCells();
  const Screen screen;
  screen.Send(GCM_SETSIZE, kRows, kCols);
  screen.Fill(cells, texts);
  const BareMap map = FilledMap(cells, texts);
  for (auto _ : state) {
    LRESULT types = 0;
    const double spent = SecondsOf([&] {
      for (const GridCell& cell : wanted)
        types += screen.SendCell(GCM_GETCELLTYPE, cell);
    });
    std::size_t characters = 0;
    const double bare = SecondsOf([&] {
      for (const GridCell& cell : wanted)
        characters += map.find(KeyOf(cell))->second.size();
    });
    benchmark::DoNotOptimize(types);
    benchmark::DoNotOptimize(characters);
    state.SetIterationTime(spent);
    state.counters["ns_each"] = spent / static_cast<double>(kCells) * 1e9;
    state.counters["to_map"] = spent / bare;
  }
}
BENCHMARK(FindAtRandom)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

void PaintScreen(benchmark::State& state) {
  const Screen screen;
  screen.Send(GCM_SETSIZE, kRows, 40);
  std::vector<GridCell> cells;
  for (std::int32_t row = 1; row <= 60; ++row) {
    for (std::int32_t col = 1; col <= 40; ++col)
      cells.push_back({row, col});
  }
  screen.Fill(cells, Texts());
  PumpMessages();
  for (auto _ : state)
    screen.Send(GCM_REFRESH);
  state.counters["cells"] = 1080 / 21 * (1920 / 50);
}
BENCHMARK(PaintScreen)->Unit(benchmark::kMillisecond);

// Scrolls line by line, a thousand lines each from the first row, from the middle and to the last
// row.
void ScrollByLines(benchmark::State& state) {
  constexpr std::int32_t kLines = 1000;
  const Screen screen;
  screen.Send(GCM_SETSIZE, kRows, kCols);
  screen.Fill(AllCells(), Texts());
  PumpMessages();
  for (auto _ : state) {
    for (const std::int32_t start : {1, kRows / 2, kRows - kLines}) {
      screen.Send(WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, start));
      for (std::int32_t line = 0; line < kLines; ++line)
        screen.Scroll(SB_LINEDOWN);
    }
  }
  state.counters["frames_per_second"] = benchmark::Counter(
      3.0 * kLines * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(ScrollByLines)->UseRealTime()->Iterations(1)->Unit(benchmark::kSecond);

// Scrolls page by page from the first row to the last, so that every row is painted once.
void ScrollThroughAllRows(benchmark::State& state) {
  const Screen screen;
  screen.Send(GCM_SETSIZE, kRows, kCols);
  screen.Fill(AllCells(), Texts());
  PumpMessages();
  double frames = 0;
  for (auto _ : state) {
    screen.Send(WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 1));
    for (int before = 0; screen.FirstRow() != before; ++frames) {
      before = screen.FirstRow();
      screen.Scroll(SB_PAGEDOWN);
    }
  }
  state.counters["frames_per_second"] = benchmark::Counter(frames, benchmark::Counter::kIsRate);
}
BENCHMARK(ScrollThroughAllRows)->UseRealTime()->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace
}  // namespace quillgate
