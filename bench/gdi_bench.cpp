// Measures how long a screen full of cells takes to paint with the calls of a grid: a framed
// rectangle and a text in each cell, on a bitmap in memory, on a desktop without a screen. The bare
// alternative only fills the same rectangles.
#include <windows.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "platform/kit/hidden_window.h"

namespace {

constexpr int kColumns = 40;
constexpr int kRows = 50;
constexpr int kCells = kColumns * kRows;
constexpr int kCellWidth = 48;
constexpr int kCellHeight = 21;

// A window, which keeps the desktop open, and a bitmap to draw on.
class Screen {
 public:
  Screen() {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    window_.emplace();
    context_ = ::CreateCompatibleDC(nullptr);
    const HDC screen = ::GetDC(nullptr);
    bitmap_ = ::CreateCompatibleBitmap(screen, kColumns * kCellWidth + 1, kRows * kCellHeight + 1);
    ::ReleaseDC(nullptr, screen);
    previous_ = ::SelectObject(context_, bitmap_);
    ::SetBkMode(context_, TRANSPARENT);
  }
  ~Screen() {
    ::SelectObject(context_, previous_);
    ::DeleteDC(context_);
    ::DeleteObject(bitmap_);
  }
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  HDC Context() const { return context_; }

 private:
  std::optional<HiddenWindow> window_;
  HDC context_;
  HBITMAP bitmap_;
  HGDIOBJ previous_;
};

RECT CellAt(int index) {
  const int left = index % kColumns * kCellWidth;
  const int top = index / kColumns * kCellHeight;
  return {left, top, left + kCellWidth + 1, top + kCellHeight + 1};
}

// The pen, brush and font of a cell, as in a grid.
struct Tools {
  HPEN pen = ::CreatePen(PS_SOLID, 1, RGB(220, 220, 220));
  HBRUSH brush = ::CreateSolidBrush(RGB(255, 255, 255));
  HFONT font = ::CreateFontW(16, 0, 0, 0, FW_THIN, 0, 0, 0, 0, 0, 0, PROOF_QUALITY,
                             VARIABLE_PITCH | FF_SWISS, nullptr);

  Tools() = default;
  ~Tools() {
    ::DeleteObject(pen);
    ::DeleteObject(brush);
    ::DeleteObject(font);
  }
  Tools(const Tools&) = delete;
  Tools& operator=(const Tools&) = delete;
};

void DrawCell(HDC context, const Tools& tools, int index, std::wstring& text) {
  const RECT cell = CellAt(index);
  const HGDIOBJ pen = ::SelectObject(context, tools.pen);
  const HGDIOBJ brush = ::SelectObject(context, tools.brush);
  ::Rectangle(context, cell.left, cell.top, cell.right, cell.bottom);
  ::SetTextColor(context, index % 2 == 0 ? RGB(0, 0, 0) : RGB(0, 0, 128));
  const HGDIOBJ font = ::SelectObject(context, tools.font);
  RECT inner{cell.left + 2, cell.top, cell.right - 2, cell.bottom};
  ::DrawTextExW(context, text.data(), static_cast<int>(text.size()), &inner,
                DT_RIGHT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS, nullptr);
  ::SelectObject(context, font);
  ::SelectObject(context, brush);
  ::SelectObject(context, pen);
}

// Draws every cell once an iteration, by its index.
template <class Draw>
void DrawCells(benchmark::State& state, const Draw& draw) {
  for (auto _ : state) {
    for (int i = 0; i < kCells; ++i)
      draw(i);
  }
  state.counters["per_cell"] = benchmark::Counter(
      static_cast<double>(kCells),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void PaintCells(benchmark::State& state, const std::wstring& format) {
  const Screen screen;
  const Tools tools;
  std::vector<std::wstring> texts;
  for (int i = 0; i < kCells; ++i)
    texts.push_back(format + std::to_wstring(10'000 + 7 * i));
  DrawCells(state, [&](int i) {
    DrawCell(screen.Context(), tools, i, texts[static_cast<std::size_t>(i)]);
  });
}
BENCHMARK_CAPTURE(PaintCells, Numbers, L"")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PaintCells, EndInDots, L"Too long ")->Unit(benchmark::kMillisecond);

// Every text is drawn only once.
void PaintNewTexts(benchmark::State& state) {
  const Screen screen;
  const Tools tools;
  int number = 10'000;
  DrawCells(state, [&](int i) {
    std::wstring text = std::to_wstring(number++);
    DrawCell(screen.Context(), tools, i, text);
  });
}
BENCHMARK(PaintNewTexts)->Unit(benchmark::kMillisecond);

void FillCells(benchmark::State& state) {
  const Screen screen;
  const Tools tools;
  DrawCells(state, [&](int i) {
    const RECT cell = CellAt(i);
    ::FillRect(screen.Context(), &cell, tools.brush);
  });
}
BENCHMARK(FillCells)->Unit(benchmark::kMillisecond);

void PaintCheckBoxes(benchmark::State& state) {
  const Screen screen;
  DrawCells(state, [&](int i) {
    RECT cell = CellAt(i);
    ::DrawFrameControl(screen.Context(), &cell, DFC_BUTTON,
                       DFCS_BUTTONCHECK | (i % 2 != 0 ? DFCS_CHECKED : 0u));
  });
}
BENCHMARK(PaintCheckBoxes)->Unit(benchmark::kMillisecond);

void PaintHeadings(benchmark::State& state) {
  const Screen screen;
  DrawCells(state, [&](int i) {
    RECT cell = CellAt(i);
    ::DrawEdge(screen.Context(), &cell, EDGE_ETCHED, BF_RECT | BF_MIDDLE | BF_ADJUST);
  });
}
BENCHMARK(PaintHeadings)->Unit(benchmark::kMillisecond);

}  // namespace
