#include "hours_user.h"

#include <QTest>
#include <QWindow>
#include <array>

#include "grid/grid_messages.h"
#include "settings/hours_grid.h"

namespace quillgate {
namespace {

constexpr int kHeadingHeight = 21;
constexpr int kHeadingWidth = 60;
constexpr int kCellEdge = 19;

// In the grid.
QPoint MiddleOf(GridCell cell) {
  return {cell.col == 0 ? kHeadingWidth / 2 : kHeadingWidth + (cell.col - 1) * kCellEdge + 9,
          cell.row == 0 ? kHeadingHeight / 2 : kHeadingHeight + (cell.row - 1) * kCellEdge + 9};
}

bool IsInputPending() {
  MSG message;
  return ::PeekMessageW(&message, nullptr, WM_MOUSEMOVE, WM_RBUTTONUP, PM_NOREMOVE) != FALSE;
}

}  // namespace

HoursUser::HoursUser(DesktopScript& script, const QString& title)
    : script_(script),
      window_(script.AwaitWindow(title)),
      grid_(script.Child(window_, kHoursGridId)) {}

void HoursUser::AwaitHeard() {
  script_.Await([] { return !IsInputPending(); }, "end of the input");
}

void HoursUser::Press() {
  script_.Do([this] {
    QTest::mousePress(window_->windowHandle(), Qt::LeftButton, Qt::NoModifier, pointer_);
  });
  AwaitHeard();
}

void HoursUser::Release() {
  script_.Do([this] {
    QTest::mouseRelease(window_->windowHandle(), Qt::LeftButton, Qt::NoModifier, pointer_);
  });
  AwaitHeard();
}

void HoursUser::MoveTo(GridCell cell, int offset) {
  script_.Do([&] {
    pointer_ = grid_->mapTo(window_, MiddleOf(cell) + QPoint(offset, 0));
    QTest::mouseMove(window_->windowHandle(), pointer_);
  });
  AwaitHeard();
}

void HoursUser::Click(GridCell cell) {
  MoveTo(cell);
  Press();
  Release();
}

void HoursUser::DoubleClick(GridCell cell) {
  MoveTo(cell);
  script_.Do([this] {
    QTest::mouseDClick(window_->windowHandle(), Qt::LeftButton, Qt::NoModifier, pointer_);
  });
  AwaitHeard();
}

bool HoursUser::IsBlocked(GridCell cell) {
  const HWND grid = script_.HandleOf(grid_);
  bool blocked = false;
  script_.Do([&] {
    blocked = ::SendMessageW(grid, GCM_GETPROTECT, reinterpret_cast<WPARAM>(&cell), 0) == 1;
  });
  return blocked;
}

QString HoursUser::TextOf(GridCell cell) {
  const HWND grid = script_.HandleOf(grid_);
  std::array<wchar_t, kGridMaxText + 1> text{};
  script_.Do([&] {
    ::SendMessageW(grid, GCM_GETCELL, reinterpret_cast<WPARAM>(&cell),
                   reinterpret_cast<LPARAM>(text.data()));
  });
  return QString::fromWCharArray(text.data());
}

void HoursUser::AwaitColour(GridCell cell, const QColor& colour) {
  const QPoint place = MiddleOf(cell) - QPoint(4, 4);
  script_.Await([&] { return grid_->grab().toImage().pixelColor(place) == colour; },
                QString("%1 in row %2, column %3").arg(colour.name()).arg(cell.row).arg(cell.col));
}

}  // namespace quillgate
