// What the tests of this folder share: a machine with a desktop and what dialogs are made with. The
// dialogs open on the test's own thread, and a script plays the user.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QMessageBox>
#include <QPushButton>

#include "desktop/dialog_driver.h"
#include "platform/testing/simulated_machine.h"
#include "resources/resource.h"
#include "storage/settings.h"
#include "ui/desktop/lasting_window.h"
#include "ui/help_system.h"
#include "ui/ui_surroundings.h"

namespace quillgate {

inline const QString kBoxTitle = "Quillgate";

class UiDesktopTest : public testing::Test {
 protected:
  UiDesktopTest() {
    machine_.UseDesktop();
    machine_.ShowMessageBoxes();
    catalogue_.SetInterfaceLanguage(1033);
    EXPECT_TRUE(window_.Create());
  }

  // The text of the message box that is open, which the OK button closes.
  static QString CloseBox(DesktopScript& script) {
    auto* box = qobject_cast<QMessageBox*>(script.AwaitWindow(kBoxTitle));
    if (box == nullptr) return "(not a message box)";
    QString text;
    script.Do([&] { text = box->text(); });
    script.Click(box, IDOK);
    script.AwaitNoWindow(kBoxTitle);
    return text;
  }

  platform::SimulatedMachine machine_;
  LastingWindow window_;
  Database database_;
  Settings settings_{database_};
  MessageCatalogue catalogue_;
  HelpSystem help_;
  UiSurroundings ui_{catalogue_, help_};
};

}  // namespace quillgate
