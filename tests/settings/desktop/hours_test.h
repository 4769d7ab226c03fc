// What the tests of the editor of connection hours share: a table, and the editor run on it as its
// callers do.
#pragma once

#include <vector>

#include "frame/desktop/frame_test.h"
#include "hours_user.h"
#include "settings/hours_dialog.h"

namespace quillgate {

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
