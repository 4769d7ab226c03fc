// Fields of one line, typed into for real.
#include <QClipboard>
#include <QDragEnterEvent>
#include <QLineEdit>

#include "platform/controls/control_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EditTest : public ControlTest {
 protected:
  HWND Edit(DWORD style = 0, const wchar_t* text = L"") {
    return Make(L"EDIT", ES_AUTOHSCROLL | style, text);
  }
  static std::pair<DWORD, DWORD> Selection(HWND edit) {
    DWORD start = 0;
    DWORD end = 0;
    const LRESULT both =
        Send(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(both, MAKELONG(start, end));
    return {start, end};
  }
};

TEST_F(EditTest, WhatIsTypedIsTheTextAndToldLater) {
  HWND edit = Edit(0, L"a");
  Press(edit, Qt::Key_End);
  Type(edit, "bc");
  EXPECT_THAT(ToldAtOnce(), IsEmpty()) << "told inside the desktop's event";
  EXPECT_THAT(Told(), ElementsAre("command 1 768", "command 1 768"));  // EN_CHANGE
  EXPECT_EQ(TextOf(edit), L"abc");
}

TEST_F(EditTest, ATextThatIsSetIsShownAndToldAtOnce) {
  HWND edit = Edit();
  ::SetWindowTextW(edit, L"5 \u20AC");
  EXPECT_THAT(ToldAtOnce(), ElementsAre("command 1 768"));
  EXPECT_EQ(WidgetOf<QLineEdit>(edit)->text(), QString("5 \u20AC"));
  EXPECT_EQ(Selection(edit), std::pair(DWORD{0}, DWORD{0})) << "the caret stands at the beginning";
  EXPECT_EQ(TextOf(edit), L"5 \u20AC");
}

TEST_F(EditTest, TheFirstTextIsNotAChange) {
  HWND edit = Edit(0, L"first");
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_EQ(WidgetOf<QLineEdit>(edit)->text(), "first");
}

TEST_F(EditTest, FocusIsTold) {
  HWND first = Edit();
  HWND second = Edit();
  Focus(first);
  EXPECT_THAT(Told(), ElementsAre("command 1 256"));  // EN_SETFOCUS
  Focus(second);
  EXPECT_THAT(Told(), ElementsAre("command 1 512", "command 2 256"));  // EN_KILLFOCUS
}

struct Selecting {
  int start;
  int end;
  std::pair<DWORD, DWORD> expected;
};
constexpr Selecting kSelections[] = {
    {0, -1, {0, 5}}, {1, 3, {1, 3}},   {3, 1, {1, 3}}, {2, 2, {2, 2}},
    {4, 99, {4, 5}}, {99, 99, {5, 5}}, {0, 0, {0, 0}},
};

TEST_F(EditTest, SelectionsAreCountedAndBounded) {
  HWND edit = Edit(0, L"hello");
  for (const Selecting& each : kSelections) {
    SCOPED_TRACE(::testing::Message() << each.start << " to " << each.end);
    Send(edit, EM_SETSEL, static_cast<WPARAM>(each.start), LPARAM{each.end});
    EXPECT_EQ(Selection(edit), each.expected);
  }
  Send(edit, EM_SETSEL, 0, -1);
  Send(edit, EM_SETSEL, static_cast<WPARAM>(-1), 0);
  EXPECT_EQ(Selection(edit), std::pair(5u, 5u)) << "-1 deselects";
}

TEST_F(EditTest, WhatIsSelectedIsReplacedByTyping) {
  HWND edit = Edit(0, L"hello");
  Send(edit, EM_SETSEL, 0, -1);
  Type(edit, "x");
  EXPECT_EQ(TextOf(edit), L"x");
}

TEST_F(EditTest, PositionsCountCharactersBeyondTheBasicPlaneOnce) {
  HWND edit = Edit(0, L"\U0001F600ab");
  Send(edit, EM_SETSEL, 1, 2);
  EXPECT_EQ(WidgetOf<QLineEdit>(edit)->selectedText(), "a");
  EXPECT_EQ(Selection(edit), std::pair(1u, 2u));
}

TEST_F(EditTest, TheLimitIsForTypingOnly) {
  HWND edit = Edit();
  Send(edit, EM_SETLIMITTEXT, 3);
  Type(edit, "abcd");
  EXPECT_EQ(TextOf(edit), L"abc");
  ::SetWindowTextW(edit, L"longer");
  EXPECT_EQ(WidgetOf<QLineEdit>(edit)->text(), "longer");
  Type(edit, "x");
  EXPECT_EQ(TextOf(edit), L"longer");
  Send(edit, EM_SETLIMITTEXT, 0);
  Type(edit, "x");
  EXPECT_EQ(TextOf(edit), L"longerx");
}

TEST_F(EditTest, WhatIsPastedIsCutAtTheLimitAndNothingIsDropped) {
  HWND edit = Edit();
  Send(edit, EM_SETLIMITTEXT, 3);
  QGuiApplication::clipboard()->setText("abcd");
  Press(edit, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(TextOf(edit), L"abc");
  QDragEnterEvent drag({}, Qt::CopyAction, QGuiApplication::clipboard()->mimeData(), {}, {});
  QCoreApplication::sendEvent(WidgetOf<QLineEdit>(edit), &drag);
  EXPECT_FALSE(drag.isAccepted());
}

TEST_F(EditTest, ANumberFieldTakesDigitsOnly) {
  HWND edit = Edit(ES_NUMBER);
  Type(edit, "1a2-3.");
  EXPECT_EQ(TextOf(edit), L"123");
  ::SetWindowTextW(edit, L"n/a");
  EXPECT_EQ(WidgetOf<QLineEdit>(edit)->text(), "n/a");
  Press(edit, Qt::Key_Delete);
  EXPECT_EQ(TextOf(edit), L"/a") << "what was set can be deleted";
}

TEST_F(EditTest, APasswordIsNotShown) {
  HWND edit = Edit(ES_PASSWORD);
  Type(edit, "secret");
  EXPECT_EQ(TextOf(edit), L"secret");
  EXPECT_FALSE(WidgetOf<QLineEdit>(edit)->displayText().contains("secret"));
}

TEST_F(EditTest, AReadOnlyFieldIsNotChanged) {
  HWND edit = Edit(ES_READONLY, L"fixed");
  Type(edit, "x");
  EXPECT_EQ(TextOf(edit), L"fixed");
  EXPECT_EQ(Send(edit, EM_SETREADONLY, FALSE), TRUE);
  Press(edit, Qt::Key_End);
  Type(edit, "x");
  EXPECT_EQ(TextOf(edit), L"fixedx");
}

TEST_F(EditTest, AMultilineFieldIsNotMade) {
  constexpr DWORD kMultiline = 0x0004;
  EXPECT_EQ(Edit(kMultiline), nullptr);
}

}  // namespace
