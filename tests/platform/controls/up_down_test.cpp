// Up-downs: the arrows, the field beside them, and the parent's say.
#include <QToolButton>

#include "platform/controls/control_test.h"

namespace {

using ::testing::ElementsAre;

class UpDownTest : public ControlTest {
 protected:
  HWND UpDown(DWORD style = 0) { return Make(UPDOWN_CLASS, style); }
  static void ClickArrow(HWND upDown, Qt::ArrowType arrow) {
    for (QToolButton* button : WidgetOf(upDown)->findChildren<QToolButton*>()) {
      if (button->arrowType() == arrow) Click(button);
    }
    PumpAll();
  }
  static int Position(HWND upDown) { return static_cast<int>(Send(upDown, UDM_GETPOS32)); }
  // What stands in the field after that key.
  static std::wstring TextAfter(HWND edit, Qt::Key key) {
    Press(edit, key);
    PumpAll();
    return TextOf(edit);
  }
};

TEST_F(UpDownTest, StepsAreNotifiedAndMayBeRefusedOrChanged) {
  HWND upDown = UpDown();
  Send(upDown, UDM_SETRANGE32, 0, 10);
  EXPECT_EQ(Send(upDown, UDM_SETPOS32, 0, 5), 0);
  NMUPDOWN heard{};
  int step = 0;
  onNotify = [&](const NMHDR& header) {
    heard = reinterpret_cast<const NMUPDOWN&>(header);
    if (step != 0) const_cast<NMUPDOWN&>(reinterpret_cast<const NMUPDOWN&>(header)).iDelta = step;
  };
  ClickArrow(upDown, Qt::UpArrow);
  EXPECT_THAT(Notified(), ElementsAre("notify 1 -722"));
  EXPECT_EQ(heard.iPos, 5);
  EXPECT_EQ(heard.iDelta, 1);
  EXPECT_EQ(Position(upDown), 6);
  answer = 1;
  ClickArrow(upDown, Qt::DownArrow);
  EXPECT_EQ(heard.iDelta, -1);
  EXPECT_EQ(Position(upDown), 6) << "the parent refused";
  answer = 0;
  step = 3;
  ClickArrow(upDown, Qt::UpArrow);
  EXPECT_EQ(Position(upDown), 9);
  ClickArrow(upDown, Qt::UpArrow);
  EXPECT_EQ(Position(upDown), 10) << "the range ends here";
  heard = {};
  ClickArrow(upDown, Qt::UpArrow);
  EXPECT_EQ(heard.iPos, 10) << "the parent hears of no step at the end";
}

TEST_F(UpDownTest, UntilARangeIsSetTheUpperArrowDecreases) {
  HWND upDown = UpDown(UDS_HORZ);
  int low = 0;
  int high = 1;
  Send(upDown, UDM_GETRANGE32, reinterpret_cast<WPARAM>(&low), reinterpret_cast<LPARAM>(&high));
  EXPECT_EQ(low, 100);
  EXPECT_EQ(high, 0);
  int delta = 0;
  onNotify = [&](const NMHDR& header) { delta = reinterpret_cast<const NMUPDOWN&>(header).iDelta; };
  ClickArrow(upDown, Qt::RightArrow);
  EXPECT_EQ(delta, -1);
  ClickArrow(upDown, Qt::LeftArrow);
  EXPECT_EQ(delta, 1);
}

TEST_F(UpDownTest, TheFieldBesideItIsReadAndWritten) {
  HWND edit = Make(L"EDIT", ES_NUMBER, L"", 100);
  const int before = WidgetOf(edit)->geometry().right();
  HWND upDown =
      UpDown(UDS_AUTOBUDDY | UDS_SETBUDDYINT | UDS_ALIGNRIGHT | UDS_ARROWKEYS | UDS_NOTHOUSANDS);
  EXPECT_EQ(reinterpret_cast<HWND>(Send(upDown, UDM_GETBUDDY)), edit);
  const QRect field = WidgetOf(edit)->geometry();
  const QRect arrows = WidgetOf(upDown)->geometry();
  EXPECT_EQ(arrows.right(), before) << "the arrows take their place from the field";
  EXPECT_LE(field.right(), arrows.left());
  EXPECT_EQ(arrows.height(), field.height());

  Send(upDown, UDM_SETRANGE32, 1, 5000);
  Send(upDown, UDM_SETPOS32, 0, 1234);
  EXPECT_EQ(TextOf(edit), L"1234");
  EXPECT_EQ(TextAfter(edit, Qt::Key_Up), L"1235");
  ::SetWindowTextW(edit, L"20");
  EXPECT_EQ(TextAfter(edit, Qt::Key_Down), L"19") << "the number that was typed counts";
  BOOL failed = TRUE;
  EXPECT_EQ(Send(upDown, UDM_GETPOS32, 0, &failed), 19);
  EXPECT_FALSE(failed);
  ::SetWindowTextW(edit, L"9999");
  Send(upDown, UDM_GETPOS32, 0, &failed);
  EXPECT_TRUE(failed) << "out of the range";

  ::DestroyWindow(edit);
  Notified();
  Send(upDown, UDM_SETPOS32, 0, 3);
  ClickArrow(upDown, Qt::UpArrow);
  EXPECT_EQ(Position(upDown), 4) << "it does not go on without the field";
}

TEST_F(UpDownTest, AFieldKeepsItsArrowKeysUnlessTheStyleTakesThem) {
  HWND edit = Make(L"EDIT", ES_NUMBER, L"5", 100);
  UpDown(UDS_AUTOBUDDY | UDS_SETBUDDYINT);
  EXPECT_EQ(TextAfter(edit, Qt::Key_Up), L"5");
}

}  // namespace
