// What the tests of the editor of connection hours share: a table, the editor run on it as its
// callers do, and the person before it.
#pragma once

#include <QTest>
#include <QWindow>
#include <array>
#include <vector>

#include "frame/desktop/frame_test.h"
#include "grid/grid_messages.h"
#include "grid/grid_types.h"
#include "settings/hours_dialog.h"
#include "settings/hours_grid.h"

namespace quillgate {

// A script's hands on the editor's grid, by cells. All calls are made by the script.
class HoursUser {
 public:
  // Waits for the editor.
  HoursUser(DesktopScript& script, const QString& title)
      : script_(script),
        window_(script.AwaitWindow(title)),
        grid_(script.Child(window_, kHoursGridId)) {}

  DesktopScript& Script() { return script_; }
  QWidget* Window() const { return window_; }
  QWidget* Grid() const { return grid_; }
  QWidget* Child(int id) { return script_.Child(window_, id); }
  void End(int button) { script_.Click(window_, button); }

  // With the left button, where the pointer is; returns when the editor has heard.
  void Act(QTest::MouseAction action) {
    script_.Do([&] {
      QTest::mouseEvent(action, window_->windowHandle(), Qt::LeftButton, Qt::NoModifier, pointer_);
    });
    AwaitReceived();
  }
  // Into the cell, its middle or so many pixels right of it.
  void MoveTo(GridCell cell, int offset = 0) {
    script_.Do([&] {
      pointer_ = grid_->mapTo(window_, MiddleOf(cell) + QPoint(offset, 0));
      QTest::mouseMove(window_->windowHandle(), pointer_);
    });
    AwaitReceived();
  }
  void Click(GridCell cell) {
    MoveTo(cell);
    Act(QTest::MousePress);
    Act(QTest::MouseRelease);
  }

  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    const HWND grid = script_.HandleOf(grid_);
    LRESULT answer = 0;
    script_.Do([&] { answer = ::SendMessageW(grid, message, wParam, lParam); });
    return answer;
  }
  bool IsBlocked(GridCell cell) {
    return Send(GCM_GETPROTECT, reinterpret_cast<WPARAM>(&cell)) == 1;
  }
  QString TextOf(GridCell cell) {
    std::array<wchar_t, kGridMaxText + 1> text{};
    Send(GCM_GETCELL, reinterpret_cast<WPARAM>(&cell), reinterpret_cast<LPARAM>(text.data()));
    return QString::fromWCharArray(text.data());
  }
  QStringList DayNames() {
    QStringList names;
    for (int row = 1; row <= 7; ++row)
      names << TextOf({row, 0});
    return names;
  }
  // Until the cell is painted in that colour, between its frame and its middle.
  void AwaitColour(GridCell cell, const QColor& colour) {
    const QPoint place = MiddleOf(cell) - QPoint(4, 4);
    script_.Await([&] { return grid_->grab().toImage().pixelColor(place) == colour; },
                  colour.name() + QString(" at %1, %2").arg(cell.row).arg(cell.col));
  }

 private:
  // Days are 60 pixels wide, hours 21 high, and the cells have edges of 19.
  static QPoint MiddleOf(GridCell cell) {
    return {cell.col == 0 ? 30 : 60 + (cell.col - 1) * 19 + 9,
            cell.row == 0 ? 10 : 21 + (cell.row - 1) * 19 + 9};
  }
  void AwaitReceived() {
    script_.Await(
        [] {
          MSG message;
          return !::PeekMessageW(&message, nullptr, WM_MOUSEMOVE, WM_RBUTTONUP, PM_NOREMOVE);
        },
        "end of the input");
  }

  DesktopScript& script_;
  QWidget* window_;
  QWidget* grid_;
  QPoint pointer_;  // in the window
};

class HoursTest : public FrameTest {
 protected:
  // Whether the editor ended with OK; the table is as a caller then has it.
  bool Run(const std::function<void(HoursUser&)>& user, const QString& title = "Connection hours") {
    HoursDialog dialog(ui_, settings_, nullptr, hours_);
    DesktopScript script([&](DesktopScript& steps) {
      HoursUser person(steps, title);
      user(person);
    });
    const bool accepted = dialog.Run();
    if (accepted) hours_ = dialog.Hours();
    return accepted;
  }
  void BeginWeekWith(const wchar_t* day) { settings_.SetSetting(SettingKey::kFirstDayOfWeek, day); }
  // Of all hours of the week those that are blocked.
  std::vector<std::size_t> Blocked() const {
    std::vector<std::size_t> blocked;
    for (std::size_t i = 0; i < hours_.size(); ++i) {
      if (hours_[i]) blocked.push_back(i);
    }
    return blocked;
  }

  HoursTable hours_{};
};

}  // namespace quillgate
