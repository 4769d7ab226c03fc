// Push buttons, check boxes, radio buttons and group boxes, clicked for real.
#include <QAbstractButton>

#include "platform/controls/control_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ButtonTest : public ControlTest {
 protected:
  HWND Button(DWORD style, const wchar_t* text = L"Button") { return Make(L"BUTTON", style, text); }
  static bool IsChecked(HWND button) { return Send(button, BM_GETCHECK) == BST_CHECKED; }
  // Both the control's state and what the user sees.
  static void ExpectChecked(HWND button, bool checked) {
    EXPECT_EQ(IsChecked(button), checked);
    EXPECT_EQ(WidgetOf<QAbstractButton>(button)->isChecked(), checked);
  }
  // Only at the mark is a click sure to count.
  static void ClickMark(HWND button) {
    QWidget* widget = WidgetOf(button);
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
  }
};

struct Kind {
  const char* name;
  DWORD style;
  bool checksItself;
  bool unchecksItself;
  LRESULT dialogCode;
};
constexpr Kind kKinds[] = {
    {"push button", BS_PUSHBUTTON, false, false, DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON},
    {"default button", BS_DEFPUSHBUTTON, false, false, DLGC_BUTTON | DLGC_DEFPUSHBUTTON},
    {"check box", BS_CHECKBOX, false, false, DLGC_BUTTON},
    {"automatic check box", BS_AUTOCHECKBOX, true, true, DLGC_BUTTON},
    {"radio button", BS_RADIOBUTTON, false, false, DLGC_BUTTON | DLGC_RADIOBUTTON},
    {"automatic radio button", BS_AUTORADIOBUTTON, true, false, DLGC_BUTTON | DLGC_RADIOBUTTON},
};

TEST_F(ButtonTest, AClickIsToldOnceAndChangesAutomaticKindsOnly) {
  int number = 0;
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    HWND button = Button(kind.style | WS_GROUP);
    EXPECT_EQ(Send(button, WM_GETDLGCODE), kind.dialogCode);
    const std::string clicked = "command " + std::to_string(++number) + " 0";
    ClickMark(button);
    EXPECT_THAT(ToldAtOnce(), IsEmpty()) << "told inside the desktop's event";
    EXPECT_THAT(Told(), ElementsAre(clicked));
    EXPECT_EQ(IsChecked(button), kind.checksItself);
    ClickMark(button);
    EXPECT_THAT(Told(), ElementsAre(clicked));
    EXPECT_EQ(IsChecked(button), kind.checksItself && !kind.unchecksItself);
    Send(button, BM_CLICK);
    EXPECT_THAT(ToldAtOnce(), ElementsAre(clicked)) << "not told while the message was handled";
  }
}

TEST_F(ButtonTest, TheSpaceBarClicks) {
  HWND box = Button(BS_AUTOCHECKBOX);
  Focus(box);
  Press(box, Qt::Key_Space);
  EXPECT_THAT(Told(), ElementsAre("command 1 0"));
  ExpectChecked(box, true);
}

TEST_F(ButtonTest, ADisabledButtonIsNotClicked) {
  HWND button = Button(BS_PUSHBUTTON);
  ::EnableWindow(button, FALSE);
  Click(button);
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(ButtonTest, SettingACheckTellsNobodyAndTouchesNoOther) {
  HWND first = Button(BS_AUTORADIOBUTTON | WS_GROUP);
  HWND second = Button(BS_AUTORADIOBUTTON);
  Send(first, BM_SETCHECK, BST_CHECKED);
  Send(second, BM_SETCHECK, BST_CHECKED);
  ExpectChecked(first, true);
  ExpectChecked(second, true);
  Send(first, BM_SETCHECK, BST_UNCHECKED);
  Send(second, BM_SETCHECK, BST_UNCHECKED);
  ExpectChecked(first, false);
  ExpectChecked(second, false);
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(ButtonTest, ARadioButtonUnchecksItsOwnGroupOnly) {
  HWND first = Button(BS_AUTORADIOBUTTON | WS_GROUP);
  HWND second = Button(BS_AUTORADIOBUTTON);
  HWND other = Button(BS_AUTORADIOBUTTON | WS_GROUP);
  HWND third = Button(BS_AUTORADIOBUTTON);
  Send(first, BM_SETCHECK, BST_CHECKED);
  Send(other, BM_SETCHECK, BST_CHECKED);
  ClickMark(second);
  ExpectChecked(first, false);
  ExpectChecked(second, true);
  ExpectChecked(other, true);
  ClickMark(third);
  ExpectChecked(other, false);
  ExpectChecked(second, true);
}

TEST_F(ButtonTest, ArrowsAndKeysOfTextsDoNothingOutsideADialog) {
  HWND first = Button(BS_AUTORADIOBUTTON | WS_GROUP, L"&First");
  HWND second = Button(BS_AUTORADIOBUTTON, L"&Second");
  Make(L"STATIC", SS_LEFT, L"&Text");
  HWND edit = Make(L"EDIT", 0);
  Send(first, BM_SETCHECK, BST_CHECKED);
  Focus(first);
  Press(first, Qt::Key_Down);
  Press(first, Qt::Key_S, Qt::AltModifier);
  Press(first, Qt::Key_T, Qt::AltModifier);
  EXPECT_THAT(Told(), IsEmpty());
  ExpectChecked(second, false);
  EXPECT_TRUE(WidgetOf(first)->hasFocus());
  EXPECT_FALSE(WidgetOf(edit)->hasFocus());
}

TEST_F(ButtonTest, AGroupBoxLiesBehindWhatItEncloses) {
  HWND inside = Make(L"BUTTON", BS_PUSHBUTTON, L"Inside");
  HWND frame = Make(L"BUTTON", BS_GROUPBOX, L"Frame");
  ::SetWindowPos(frame, nullptr, 0, 0, 300, 300, SWP_NOZORDER);
  QWidget* parent = WidgetOf(Parent());
  const QPoint middle = WidgetOf(inside)->geometry().center();
  QWidget* hit = parent->childAt(middle);
  ASSERT_EQ(hit, WidgetOf(inside));
  EXPECT_EQ(parent->childAt(290, 290), nullptr) << "the frame takes clicks";
  EXPECT_EQ(Send(frame, WM_GETDLGCODE), DLGC_STATIC);
}

TEST_F(ButtonTest, TheKeyOfAGroupBoxGoesToTheNextControl) {
  BecomeDialog();
  Make(L"BUTTON", BS_GROUPBOX, L"&Group");
  Make(L"STATIC", SS_LEFT, L"Text");
  HWND edit = Make(L"EDIT", ES_AUTOHSCROLL);
  HWND other = Make(L"EDIT", ES_AUTOHSCROLL);
  Focus(other);
  Press(other, Qt::Key_G, Qt::AltModifier);
  EXPECT_TRUE(WidgetOf(edit)->hasFocus());
}

TEST_F(ButtonTest, AWindowMayEndInItsOwnClick) {
  HWND button = Button(BS_PUSHBUTTON);
  onCommand = [button](int, int) { ::DestroyWindow(button); };
  Click(button);
  EXPECT_THAT(Told(), ElementsAre("command 1 0"));
  EXPECT_FALSE(::IsWindow(button));
  EXPECT_EQ(WidgetOf(button), nullptr);
}

TEST_F(ButtonTest, AClickOnAButtonThatIsGoneIsNotTold) {
  HWND button = Button(BS_PUSHBUTTON);
  Click(button);
  ::DestroyWindow(button);
  EXPECT_THAT(Told(), IsEmpty());
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

TEST_F(ButtonTest, KindsThatDoNotExistAreNotMade) {
  constexpr DWORD kOwnerDrawn = 0x000B;
  EXPECT_EQ(Make(L"BUTTON", kOwnerDrawn), nullptr);
}

}  // namespace
