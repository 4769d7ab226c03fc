// A wizard's pages while a user goes forward and back.
#include "frame/wizard_page.h"

#include <stdexcept>

#include "frame/desktop/frame_test.h"
#include "frame/desktop/sheet_user.h"
#include "frame/property_sheet.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

class RecordingPage final : public WizardPage {
 public:
  RecordingPage(const UiSurroundings& ui, UINT templateNumber, std::optional<Header> header,
                std::vector<std::string>& log)
      : WizardPage(ui, templateNumber, kMsgConnectionInformation, header, {}), log_(log) {}

  std::optional<UINT> next;
  std::optional<UINT> back;
  DWORD buttons = PSWIZB_BACK | PSWIZB_NEXT;
  bool throws = false;
  bool yields = true;

 private:
  std::optional<UINT> OnNext() override {
    log_.push_back("next");
    if (throws) throw std::runtime_error("next");
    return next;
  }
  std::optional<UINT> OnBack() override { return back; }
  bool OnFinish() override {
    log_.push_back("finish");
    return yields;
  }
  bool OnQueryCancel() override { return yields; }
  void OnSetActive() override { log_.push_back(next ? "first" : "last"); }
  DWORD Buttons() const override { return buttons; }

  std::vector<std::string>& log_;
};

TEST_F(FrameTest, AWizardGoesWhereItsPagesSayAndStaysWhereTheyRefuse) {
  std::vector<std::string> log;
  RecordingPage first(ui_, IDD_CONNECTION_GENERAL, {}, log);
  RecordingPage last(ui_, IDD_CONNECTION_DETAILS, {{kMsgGeneral, kMsgDetails}}, log);
  first.next = IDD_CONNECTION_DETAILS;
  first.buttons = PSWIZB_NEXT;
  first.throws = true;
  last.back = IDD_CONNECTION_GENERAL;
  last.buttons = PSWIZB_BACK | PSWIZB_FINISH;
  last.yields = false;
  PropertySheet wizard(catalogue_, kMsgConnectionInformation,
                       PropertySheet::WizardBitmaps{IDB_LOGON_BANNER, IDB_LOGON_BANNER});
  wizard.Add(first);
  wizard.Add(last);
  const auto turn = [&](DesktopScript& steps, QWidget* window) {
    steps.Do([&] { EXPECT_EQ(last.Window(), nullptr); });
    EXPECT_FALSE(steps.Child(window, kBack)->isEnabled());
    steps.Click(window, kNext);
    EXPECT_EQ(CloseBox(steps), "An unknown error has occurred. Please notify the author.");
    steps.Do([&] { first.throws = false; });
    for (const int button : {kNext, kBack, kNext, IDCANCEL, kFinish})
      steps.Click(window, button);
    steps.Do([&] { last.yields = true; });
  };
  DesktopScript script(UserOf("Connection information", kFinish, turn));
  EXPECT_TRUE(wizard.Run());
  EXPECT_THAT(log, ElementsAre("first", "next", "next", "last", "first", "next", "last", "finish",
                               "finish"));
}

}  // namespace
}  // namespace quillgate
