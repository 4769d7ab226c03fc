// Push buttons, check boxes, radio buttons and group boxes, clicked for real.
#include <QAbstractButton>

#include "platform/controls/control_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ButtonTest : public ControlTest {
 protected:
  HWND Button(DWORD style, const wchar_t* text = L"Button") { return Make(L"BUTTON", style, text); }
  static bool IsChecked(HWND button) {
    const bool isChecked = Send(button, BM_GETCHECK) == BST_CHECKED;
    EXPECT_EQ(WidgetOf<QAbstractButton>(button)->isChecked(), isChecked) << "not what is shown";
    return isChecked;
  }
  // Only at the mark is a click sure to count.
  static void ClickMark(HWND button) {
    QWidget* widget = WidgetOf(button);
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
  }
};

TEST_F(ButtonTest, AClickIsNotifiedOnceAndChangesAutomaticKindsOnly) {
  const struct {
    const char* name;
    DWORD style;
    bool checksItself;
    bool unchecksItself;
    LRESULT dialogCode;
  } kinds[] = {
      {"push button", BS_PUSHBUTTON, false, false, DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON},
      {"default button", BS_DEFPUSHBUTTON, false, false, DLGC_BUTTON | DLGC_DEFPUSHBUTTON},
      {"check box", BS_CHECKBOX, false, false, DLGC_BUTTON},
      {"automatic check box", BS_AUTOCHECKBOX, true, true, DLGC_BUTTON},
      {"radio button", BS_RADIOBUTTON, false, false, DLGC_BUTTON | DLGC_RADIOBUTTON},
      {"automatic radio button", BS_AUTORADIOBUTTON, true, false, DLGC_BUTTON | DLGC_RADIOBUTTON},
  };
  int number = 0;
  for (const auto& kind : kinds) {
    SCOPED_TRACE(kind.name);
    HWND button = Button(kind.style | WS_GROUP);
    EXPECT_EQ(Send(button, WM_GETDLGCODE), kind.dialogCode);
    const std::string clicked = "command " + std::to_string(++number) + " 0";
    ClickMark(button);
    EXPECT_THAT(NotifiedAtOnce(), IsEmpty()) << "told inside the desktop's event";
    EXPECT_THAT(Notified(), ElementsAre(clicked));
    EXPECT_EQ(IsChecked(button), kind.checksItself);
    Focus(button);
    Press(button, Qt::Key_Space);
    EXPECT_THAT(Notified(), ElementsAre(clicked));
    EXPECT_EQ(IsChecked(button), kind.checksItself && !kind.unchecksItself);
    Send(button, BM_CLICK);
    EXPECT_THAT(NotifiedAtOnce(), ElementsAre(clicked)) << "not told while the message was handled";
    ::EnableWindow(button, FALSE);
    ClickMark(button);
    EXPECT_THAT(Notified(), IsEmpty()) << "it was disabled";
  }
}

TEST_F(ButtonTest, OnlyAClickOnARadioButtonUnchecksOthersAndOnlyInItsGroup) {
  const std::vector<HWND> buttons = {
      Button(BS_AUTORADIOBUTTON | WS_GROUP), Button(BS_AUTORADIOBUTTON),
      Button(BS_AUTORADIOBUTTON | WS_GROUP), Button(BS_AUTORADIOBUTTON)};
  const auto checked = [&] {
    std::vector<bool> marks;
    for (HWND each : buttons)
      marks.push_back(IsChecked(each));
    return marks;
  };
  for (const std::size_t index : {0u, 1u, 2u})
    Send(buttons[index], BM_SETCHECK, BST_CHECKED);
  EXPECT_THAT(checked(), ElementsAre(true, true, true, false));
  Send(buttons[1], BM_SETCHECK, BST_UNCHECKED);
  EXPECT_THAT(checked(), ElementsAre(true, false, true, false));
  EXPECT_THAT(Notified(), IsEmpty()) << "nobody clicked";
  ClickMark(buttons[1]);
  EXPECT_THAT(checked(), ElementsAre(false, true, true, false));
  ClickMark(buttons[3]);
  EXPECT_THAT(checked(), ElementsAre(false, true, false, true));
}

TEST_F(ButtonTest, ArrowsAndKeysOfTextsDoNothingOutsideADialog) {
  HWND first = Button(BS_AUTORADIOBUTTON | WS_GROUP, L"&First");
  HWND second = Button(BS_AUTORADIOBUTTON, L"&Second");
  Make(L"STATIC", SS_LEFT, L"&Text");
  Make(L"EDIT", 0);
  Send(first, BM_SETCHECK, BST_CHECKED);
  Focus(first);
  Press(first, Qt::Key_Down);
  Press(first, Qt::Key_S, Qt::AltModifier);
  Press(first, Qt::Key_T, Qt::AltModifier);
  EXPECT_THAT(Notified(), IsEmpty());
  EXPECT_FALSE(IsChecked(second));
  EXPECT_TRUE(WidgetOf(first)->hasFocus());
}

TEST_F(ButtonTest, AGroupBoxLiesBehindWhatItEncloses) {
  HWND inside = Button(BS_PUSHBUTTON, L"Inside");
  HWND frame = Button(BS_GROUPBOX, L"Frame");
  ::SetWindowPos(frame, nullptr, 0, 0, 300, 300, SWP_NOZORDER);
  const QWidget* parent = WidgetOf(Parent());
  EXPECT_EQ(parent->childAt(WidgetOf(inside)->geometry().center()), WidgetOf(inside));
  EXPECT_EQ(parent->childAt(290, 290), nullptr) << "the frame takes clicks";
  EXPECT_EQ(Send(frame, WM_GETDLGCODE), DLGC_STATIC);
}

TEST_F(ButtonTest, AButtonMayEndInItsOwnClickAndTellsNothingAfterItsEnd) {
  HWND button = Button(BS_PUSHBUTTON);
  Hear(WM_COMMAND, [button](HWND, WPARAM command, LPARAM) {
    EXPECT_EQ(command, MAKEWPARAM(1, BN_CLICKED));
    ::DestroyWindow(button);
  });
  Click(WidgetOf(button));
  Click(WidgetOf(button));
  PumpAll();
  EXPECT_EQ(CountOf(WM_COMMAND), 1);
  EXPECT_EQ(WidgetOf(button), nullptr);
}

TEST_F(ButtonTest, PushButtonsBecomeTheDefaultOneAndBack) {
  HWND button = Button(BS_PUSHBUTTON);
  Send(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
  EXPECT_EQ(Send(button, WM_GETDLGCODE), DLGC_BUTTON | DLGC_DEFPUSHBUTTON);
  EXPECT_EQ(WidgetOf(button)->property("default"), true);
  Send(button, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
  EXPECT_EQ(WidgetOf(button)->property("default"), false);
  Send(button, BM_SETSTYLE, BS_AUTOCHECKBOX, TRUE);
  EXPECT_EQ(Send(button, WM_GETDLGCODE), DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON);
}

}  // namespace
