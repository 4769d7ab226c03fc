// The About box on the screen.
#include "ui/about_dialog.h"

#include "frame/desktop/frame_test.h"
#include "resources/version.h"

namespace quillgate {
namespace {

TEST_F(FrameTest, AboutNamesTheProgramAndItsVersion) {
  const auto look = [](DesktopScript& user, QWidget* window) {
    EXPECT_EQ(user.TextOf(window, IDC_ABOUT_NAME), "Quillgate");
    EXPECT_EQ(user.TextOf(window, IDC_ABOUT_VERSION), "Version " QG_VERSION_TEXT);
  };
  DesktopScript script(UserOf("About Quillgate", IDOK, look));
  AboutDialog(ui_).Run();
}

}  // namespace
}  // namespace quillgate
