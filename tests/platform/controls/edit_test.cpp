// Fields of one line, typed into for real.
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMenu>

#include "platform/controls/control_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Selected = std::pair<DWORD, DWORD>;

class EditTest : public ControlTest {
 protected:
  HWND Edit(DWORD style = 0, const wchar_t* text = L"") {
    return Make(L"EDIT", ES_AUTOHSCROLL | style, text);
  }
  static Selected Selection(HWND edit) {
    DWORD start = 0;
    DWORD end = 0;
    const LRESULT both =
        Send(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(both, MAKELONG(start, end));
    return {start, end};
  }
  // What the user types, and what the text is then.
  static std::wstring Typed(HWND edit, const QString& text) {
    QTest::keyClicks(WidgetOf(edit), text);
    return TextOf(edit);
  }
};

TEST_F(EditTest, TypingIsNotifiedLaterAndReplacesTheSelection) {
  HWND edit = Edit(0, L"a");
  EXPECT_THAT(Notified(), IsEmpty()) << "the first text is no change";
  Press(edit, Qt::Key_End);
  EXPECT_EQ(Typed(edit, "bc"), L"abc");
  EXPECT_THAT(NotifiedAtOnce(), IsEmpty()) << "told inside the desktop's event";
  EXPECT_THAT(Notified(), ElementsAre("command 1 768", "command 1 768"));  // EN_CHANGE
  Send(edit, EM_SETSEL, 0, -1);
  EXPECT_EQ(Typed(edit, "x"), L"x");
}

TEST_F(EditTest, ATextThatIsSetIsShownAndNotifiedAtOnce) {
  HWND edit = Edit(0, L"first");
  EXPECT_EQ(WidgetOf<QLineEdit>(edit)->text(), "first");
  ::SetWindowTextW(edit, L"5 \u20AC");
  EXPECT_THAT(NotifiedAtOnce(), ElementsAre("command 1 768"));
  EXPECT_EQ(WidgetOf<QLineEdit>(edit)->text(), QString("5 \u20AC"));
  EXPECT_EQ(Selection(edit), Selected(0, 0)) << "the caret stands at the beginning";
  EXPECT_EQ(TextOf(edit), L"5 \u20AC");
}

TEST_F(EditTest, FocusIsNotified) {
  HWND first = Edit();
  HWND second = Edit();
  Focus(first);
  EXPECT_THAT(Notified(), ElementsAre("command 1 256"));  // EN_SETFOCUS
  Focus(second);
  EXPECT_THAT(Notified(), ElementsAre("command 1 512", "command 2 256"));  // EN_KILLFOCUS
}

TEST_F(EditTest, SelectionsAreCountedAndBounded) {
  HWND edit = Edit(0, L"hello");
  for (const auto& [start, end, expected] : {std::tuple{0, -1, Selected(0, 5)},
                                             {1, 3, Selected(1, 3)},
                                             {3, 1, Selected(1, 3)},
                                             {2, 2, Selected(2, 2)},
                                             {4, 99, Selected(4, 5)},
                                             {99, 99, Selected(5, 5)},
                                             {0, 0, Selected(0, 0)},
                                             {0, -1, Selected(0, 5)},
                                             {-1, 0, Selected(5, 5)}}) {
    Send(edit, EM_SETSEL, static_cast<WPARAM>(start), LPARAM{end});
    EXPECT_EQ(Selection(edit), expected) << start << " to " << end;
  }
  HWND face = Edit(0, L"\U0001F600ab");
  Send(face, EM_SETSEL, 1, 2);
  EXPECT_EQ(WidgetOf<QLineEdit>(face)->selectedText(), "a") << "a character counted twice";
  EXPECT_EQ(Selection(face), Selected(1, 2));
}

TEST_F(EditTest, TheLimitIsForTypingOnly) {
  HWND edit = Edit();
  Send(edit, EM_SETLIMITTEXT, 3);
  EXPECT_EQ(Typed(edit, "abcd"), L"abc");
  ::SetWindowTextW(edit, L"longer");
  EXPECT_EQ(WidgetOf<QLineEdit>(edit)->text(), "longer");
  EXPECT_EQ(Typed(edit, "x"), L"longer");
  Send(edit, EM_SETLIMITTEXT, 0);
  EXPECT_EQ(Typed(edit, "x"), L"longerx");
}

TEST_F(EditTest, ATextThatIsPastedIsCutAtTheLimitAndNothingIsDropped) {
  HWND edit = Edit();
  Send(edit, EM_SETLIMITTEXT, 3);
  QGuiApplication::clipboard()->setText("abcd");
  Press(edit, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(TextOf(edit), L"abc");
  QDragEnterEvent drag({}, Qt::CopyAction, QGuiApplication::clipboard()->mimeData(), {}, {});
  QCoreApplication::sendEvent(WidgetOf<QLineEdit>(edit), &drag);
  EXPECT_FALSE(drag.isAccepted());
}

TEST_F(EditTest, ItsMenuOffersWhatTheTextAllows) {
  HWND edit = Edit(0, L"text");
  QContextMenuEvent event(QContextMenuEvent::Mouse, {}, {});
  QCoreApplication::sendEvent(WidgetOf(edit), &event);
  auto* menu = WidgetOf(edit)->findChild<QMenu*>();
  ASSERT_NE(menu, nullptr);
  std::vector<std::string> offered;
  for (const QAction* each : menu->actions()) {
    if (each->isEnabled() && !each->isSeparator()) offered.push_back(each->text().toStdString());
  }
  EXPECT_THAT(offered, ElementsAre("&Paste", "Select All"));
  menu->actions().back()->trigger();
  EXPECT_EQ(Selection(edit), Selected(0, 4));
  menu->close();
}

TEST_F(EditTest, ANumberFieldTakesDigitsOnly) {
  HWND edit = Edit(ES_NUMBER);
  EXPECT_EQ(Typed(edit, "1a2-3."), L"123");
  ::SetWindowTextW(edit, L"n/a");
  EXPECT_EQ(WidgetOf<QLineEdit>(edit)->text(), "n/a");
  Press(edit, Qt::Key_Delete);
  EXPECT_EQ(TextOf(edit), L"/a") << "what was set cannot be deleted";
}

TEST_F(EditTest, APasswordIsNotShown) {
  HWND edit = Edit(ES_PASSWORD);
  EXPECT_EQ(Typed(edit, "secret"), L"secret");
  EXPECT_FALSE(WidgetOf<QLineEdit>(edit)->displayText().contains("secret"));
}

TEST_F(EditTest, AReadOnlyFieldIsNotChanged) {
  HWND edit = Edit(ES_READONLY, L"fixed");
  EXPECT_EQ(Typed(edit, "x"), L"fixed");
  EXPECT_EQ(Send(edit, EM_SETREADONLY, FALSE), TRUE);
  Press(edit, Qt::Key_End);
  EXPECT_EQ(Typed(edit, "x"), L"fixedx");
}

}  // namespace
