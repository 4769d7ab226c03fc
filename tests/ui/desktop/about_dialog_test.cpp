// The About box on the screen.
#include "ui/about_dialog.h"

#include "frame/desktop/frame_test.h"
#include "resources/version.h"

namespace quillgate {
namespace {

class AboutDialogTest : public FrameTest {};

TEST_F(AboutDialogTest, AboutNamesTheProgramAndItsVersion) {
  DesktopScript script([](DesktopScript& running) {
    QWidget* window = running.AwaitWindow("About Quillgate");
    EXPECT_EQ(running.TextOf(running.Child(window, IDC_ABOUT_NAME)), "Quillgate");
    EXPECT_EQ(running.TextOf(running.Child(window, IDC_ABOUT_VERSION)), "Version " QG_VERSION_TEXT);
    running.Click(window, IDOK);
  });
  AboutDialog(ui_).Run();
}

}  // namespace
}  // namespace quillgate
