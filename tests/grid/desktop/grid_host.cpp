#include "grid_host.h"

#include <QApplication>

namespace quillgate {
namespace {

constexpr wchar_t kHostClass[] = L"GridHost";
constexpr int kTurns = 20;

GridHostTest* current = nullptr;

}  // namespace

GridHostTest::GridHostTest() {
  machine_.UseDesktop();
  current = this;
  RegisterGridClass(::GetModuleHandleW(nullptr));
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = HostProcedure;
  windowClass.lpszClassName = kHostClass;
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(UINT_PTR{COLOR_BTNFACE + 1});
  ::RegisterClassW(&windowClass);
  host_ = ::CreateWindowExW(0, kHostClass, L"Host", WS_VISIBLE, 0, 0, 600, 500, nullptr, nullptr,
                            nullptr, nullptr);
  EXPECT_NE(host_, nullptr);
  Flow();
}

GridHostTest::~GridHostTest() {
  ::DestroyWindow(host_);
  Flow();
  current = nullptr;
}

HWND GridHostTest::MakeGrid(int id, const wchar_t* title) {
  const HWND grid = ::CreateWindowExW(0, kGridClassName, title, WS_CHILD | WS_VISIBLE, 0, 0, 320,
                                      200, host_, reinterpret_cast<HMENU>(UINT_PTR(id)),
                                      ::GetModuleHandleW(nullptr), nullptr);
  Flow();
  return grid;
}

std::wstring GridHostTest::TextOf(HWND grid, GridCell cell) {
  wchar_t text[400] = L"?";
  SendCell(grid, GCM_GETCELL, cell, reinterpret_cast<LPARAM>(text));
  return text;
}

GridCell GridHostTest::CursorOf(HWND grid) {
  return {static_cast<std::int32_t>(Send(grid, GCM_GETCURSORROW)),
          static_cast<std::int32_t>(Send(grid, GCM_GETCURSORCOL))};
}

std::vector<int> GridHostTest::TakeCodes() {
  std::vector<int> codes;
  for (const Told& each : TakeTold())
    codes.push_back(each.code);
  return codes;
}

void GridHostTest::Press(HWND grid, QPoint place) {
  QTest::mousePress(WidgetOf(grid), Qt::LeftButton, Qt::NoModifier, place);
  Flow();
}

void GridHostTest::Release(HWND grid, QPoint place) {
  QTest::mouseRelease(WidgetOf(grid), Qt::LeftButton, Qt::NoModifier, place);
  Flow();
}

void GridHostTest::MoveTo(HWND grid, QPoint place) {
  QTest::mouseMove(WidgetOf(grid), place);
  Flow();
}

void GridHostTest::Click(HWND grid, QPoint place) {
  Press(grid, place);
  // The grid may be gone by then.
  if (::IsWindow(grid)) Release(grid, place);
}

void GridHostTest::Type(HWND grid, Qt::Key key) {
  QTest::keyClick(WidgetOf(grid), key);
  Flow();
}

void GridHostTest::Type(HWND grid, const QString& text) {
  QTest::keyClicks(WidgetOf(grid), text);
  Flow();
}

void GridHostTest::Flow() {
  for (int turn = 0; turn < kTurns; ++turn) {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      ::TranslateMessage(&message);
      ::DispatchMessageW(&message);
    }
  }
}

QWidget* GridHostTest::WidgetOf(HWND window) {
  for (QWidget* each : QApplication::allWidgets()) {
    const auto handle = each->property("windowHandle").toULongLong();
    if (handle == reinterpret_cast<UINT_PTR>(window)) return each;
  }
  return nullptr;
}

std::vector<COLORREF> GridHostTest::Pixels(HWND grid, const RECT& area) {
  std::vector<COLORREF> pixels;
  const HDC context = ::GetDC(grid);
  for (int y = area.top; y < area.bottom; ++y) {
    for (int x = area.left; x < area.right; ++x)
      pixels.push_back(::GetPixel(context, x, y));
  }
  ::ReleaseDC(grid, context);
  return pixels;
}

LRESULT CALLBACK GridHostTest::HostProcedure(HWND window, UINT message, WPARAM wParam,
                                             LPARAM lParam) noexcept {
  if (message == WM_COMMAND && current != nullptr) {
    current->Note(wParam, lParam);
    return 0;
  }
  return ::DefWindowProcW(window, message, wParam, lParam);
}

void GridHostTest::Note(WPARAM wParam, LPARAM lParam) {
  const int id = LOWORD(wParam);
  const int code = HIWORD(wParam);
  if (code == GCN_MOUSEMOVE) {
    moves_.emplace_back(id, *reinterpret_cast<const GridCell*>(lParam));
  } else {
    told_.push_back({id, code, lParam});
  }
  if (onTold) onTold(::GetDlgItem(host_, id), code, lParam);
}

}  // namespace quillgate
