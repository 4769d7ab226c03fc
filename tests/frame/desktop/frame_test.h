// What the tests of this folder share: a machine with a desktop and what dialogs are made with. The
// dialogs open on the test's own thread, and a script plays the user.
#pragma once

#include <gmock/gmock.h>

#include <QLineEdit>
#include <QPointer>
#include <optional>

#include "desktop/dialog_driver.h"
#include "frame/help_system.h"
#include "frame/ui_surroundings.h"
#include "platform/kit/hidden_window.h"
#include "platform/testing/simulated_machine.h"
#include "resources/resource.h"
#include "storage/settings.h"

namespace quillgate {

inline const QString kBoxTitle = "Quillgate";
constexpr int kApply = 0x3021;  // the button of a sheet

class FrameTest : public testing::Test {
 protected:
  FrameTest() {
    machine_.UseDesktop();
    machine_.ShowMessageBoxes();
    catalogue_.SetInterfaceLanguage(1033);
    window_.emplace();
  }

  using Act = std::function<void(DesktopScript&, QWidget*)>;
  // The script of a user who acts before the window of that title and presses a button in the end,
  // unless its number is 0: the window closes by itself then.
  static std::function<void(DesktopScript&)> UserOf(const QString& title, int last,
                                                    const Act& act) {
    return [=](DesktopScript& script) {
      QWidget* window = script.AwaitWindow(title);
      act(script, window);
      if (last != 0) script.Click(window, last);
      script.AwaitNoWindow(title);
    };
  }
  // The text of the message box that is open, which the button closes.
  static QString CloseBox(DesktopScript& script, int button = IDOK) {
    const QPointer<QWidget> box = script.AwaitWindow(kBoxTitle);
    const QString text = script.TextOf(box);
    script.Click(box, button);
    // Another box may follow at once.
    script.Await([&] { return box == nullptr || !box->isVisible(); }, "end of the message box");
    return text;
  }

  // In a logon dialog, which takes no password until then, nor Enter.
  void EndPause(DesktopScript& script, QWidget* window) {
    auto* password = qobject_cast<QLineEdit*>(script.Child(window, IDC_LOGON_PASSWORD));
    const QWidget* ok = script.Child(window, IDOK);
    const auto isPaused = [&] { return !password->isEnabled() && !ok->isEnabled(); };
    script.Await([&] { return isPaused() && window->hasFocus(); }, "pause");
    script.Key(Qt::Key_Return);
    machine_.Time().Advance(std::chrono::seconds(64));
    script.Await([&] { return ok->isEnabled() && password->hasFocus(); }, "end of the pause");
    script.Do([&] { EXPECT_EQ(password->selectedText(), password->text()); });
  }

  platform::SimulatedMachine machine_;
  // Keeps the desktop from one dialog to the next, as the service's own windows do.
  std::optional<HiddenWindow> window_;
  Database database_;
  Settings settings_{database_};
  MessageCatalogue catalogue_;
  HelpSystem help_;
  StopRequest stop_;
  UiSurroundings ui_{catalogue_, help_, stop_};
};

}  // namespace quillgate
