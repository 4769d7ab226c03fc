// The help viewer's window and popups, used with real clicks and keys.
#include <htmlhelp.h>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>

#include "desktop/dialog_driver.h"
#include "platform/qt/window_fixture.h"

namespace {

class HelpOnDesktop : public WindowOnDesktop {
 protected:
  static HWND Ask(const char* place, UINT command, const HH_POPUP* popup = nullptr) {
    using Viewer = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);
    static const auto ask = reinterpret_cast<Viewer>(
        ::GetProcAddress(::LoadLibraryW(L"hhctrl.ocx"), reinterpret_cast<LPCSTR>(ULONG_PTR{15})));
    const QString location = QString(HELP_GUIDE) + "::/" + place;
    return ask(::GetDesktopWindow(), location.toStdWString().c_str(), command,
               reinterpret_cast<DWORD_PTR>(popup));
  }
  static HWND AskPopup(UINT number) {
    HH_POPUP popup{};
    popup.cbStruct = sizeof popup;
    popup.idString = number;
    popup.pt = {300, 200};
    popup.clrForeground = static_cast<COLORREF>(-1);
    popup.clrBackground = RGB(1, 2, 3);
    popup.rcMargins = {-1, -1, -1, -1};
    return Ask("popups.txt", HH_DISPLAY_TEXT_POPUP, &popup);
  }

  // With the viewer's window, which the user is in and which shows that topic.
  static void WithViewer(const char* topic, const std::function<void(HWND)>& body) {
    OnWindowThread([&] {
      ::SetThreadUILanguage(LANG_ENGLISH);
      const HWND viewer = Ask(topic, HH_DISPLAY_TOPIC);
      ASSERT_NE(viewer, nullptr);
      PumpUntilActive(viewer);
      body(viewer);
    });
  }
  template <class Widget>
  static Widget* Part(HWND viewer, const char* name) {
    return WidgetOf(viewer)->findChild<Widget*>(name);
  }
  static QTextBrowser* Page(HWND viewer) { return Part<QTextBrowser>(viewer, "topic"); }
  static bool Shows(HWND viewer, const QString& text) {
    return Page(viewer)->toPlainText().contains(text);
  }
  static void ClickLink(HWND viewer, const QString& text) {
    QTextBrowser* page = Page(viewer);
    QTextCursor place = page->document()->find(text);
    ASSERT_FALSE(place.isNull()) << text.toStdString();
    place.setPosition((place.selectionStart() + place.selectionEnd()) / 2);
    QTest::mouseClick(page->viewport(), Qt::LeftButton, {}, page->cursorRect(place).center());
  }
  static void Press(HWND viewer, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(Page(viewer), key, modifiers);
  }
};

TEST_F(HelpOnDesktop, LinksBackAndForwardMoveInTheFileAndNothingOutsideIsOpened) {
  WithViewer("html/harbour.html", [](HWND viewer) {
    EXPECT_EQ(WidgetOf(viewer)->windowTitle(), QString::fromUtf8("Vägen till ön"));
    EXPECT_FALSE(Page(viewer)
                     ->loadResource(QTextDocument::StyleSheetResource, QUrl("../guide.css"))
                     .toByteArray()
                     .isEmpty());
    ClickLink(viewer, "Booking");
    EXPECT_TRUE(Shows(viewer, "From here"));
    auto* notice = Part<QLabel>(viewer, "notice");
    EXPECT_TRUE(notice->isVisible());
    EXPECT_TRUE(notice->text().contains("https://ferry.example/"));
    ClickLink(viewer, "ferry");
    EXPECT_TRUE(Shows(viewer, "Every hour"));
    EXPECT_FALSE(notice->isVisible());
    EXPECT_EQ(Part<QTreeWidget>(viewer, "contents")->currentItem()->text(0),
              QString::fromUtf8("Färjan"));
    QTest::mouseClick(Part<QToolButton>(viewer, "back"), Qt::LeftButton);
    EXPECT_TRUE(Shows(viewer, "From here"));
    Press(viewer, Qt::Key_Right, Qt::AltModifier);
    EXPECT_TRUE(Shows(viewer, "Every hour"));
    ClickLink(viewer, "mainland");
    EXPECT_TRUE(Shows(viewer, "Topic not found"));
    Press(viewer, Qt::Key_Home, Qt::AltModifier);
    EXPECT_TRUE(Shows(viewer, "From here"));
    Press(viewer, Qt::Key_Escape);
    Pump([&] { return ::IsWindow(viewer) == FALSE; });
  });
}

TEST_F(HelpOnDesktop, AnotherTopicIsShownInTheSameWindowAndAMissingOneIsNamedInTheLanguage) {
  WithViewer("html/harbour.html", [](HWND viewer) {
    EXPECT_EQ(Ask("html/island.html", HH_DISPLAY_TOPIC), viewer);
    EXPECT_TRUE(Shows(viewer, "Winter hours"));
    ::SetThreadUILanguage(LANG_SWEDISH);
    EXPECT_EQ(Ask("html/<b>.html", HH_DISPLAY_TOPIC), nullptr);
    EXPECT_TRUE(Shows(viewer, "Avsnittet hittades inte"));
    EXPECT_TRUE(Shows(viewer, "/html/<b"));
    EXPECT_EQ(Part<QToolButton>(viewer, "back")->text(), QString::fromUtf8("Bakåt"));
  });
}

TEST_F(HelpOnDesktop, ASearchListsTopicsAndSelectsWhatWasFound) {
  WithViewer("html/harbour.html", [](HWND viewer) {
    Press(viewer, Qt::Key_F, Qt::ControlModifier);
    auto* words = Part<QLineEdit>(viewer, "words");
    ASSERT_TRUE(words->hasFocus());
    QTest::keyClicks(words, "winter");
    QTest::keyClick(words, Qt::Key_Return);
    auto* results = Part<QListWidget>(viewer, "results");
    ASSERT_EQ(results->count(), 2);
    const QRect second = results->visualItemRect(results->item(1));
    QTest::mouseClick(results->viewport(), Qt::LeftButton, {}, second.center());
    EXPECT_TRUE(Shows(viewer, "Every hour"));
    EXPECT_EQ(Page(viewer)->textCursor().selectedText(), "winter");
  });
}

TEST_F(HelpOnDesktop, TheViewerIsUsableBesideAModalWindow) {
  HWND viewer = nullptr;
  const DesktopScript user([&](DesktopScript& script) {
    auto* box = qobject_cast<QMessageBox*>(script.AwaitWindow("Caption"));
    script.Do([&] {
      QTest::mouseClick(Part<QToolButton>(viewer, "home"), Qt::LeftButton);
      EXPECT_TRUE(Shows(viewer, "From here"));
      box->close();
    });
  });
  WithWindow([&] {
    viewer = Ask("html/ferry.html", HH_DISPLAY_TOPIC);
    ::MessageBoxW(window_, L"Text", L"Caption", MB_OK);
  });
}

TEST_F(HelpOnDesktop, APopupShowsItsTextUntilTheNextInputAndKeepsEscapeForItself) {
  WithWindow([this] {
    QWidget* window = WidgetOf(window_);
    // With the number of keys that the window has got by then.
    const std::pair<std::function<void()>, int> inputs[] = {
        {[&] { QTest::keyClick(window, Qt::Key_A); }, 1},
        {[&] { QTest::mouseClick(window, Qt::LeftButton); }, 1},
        {[&] { QTest::keyClick(window, Qt::Key_Escape); }, 1},
    };
    for (const auto& [input, keys] : inputs) {
      const HWND popup = AskPopup(7);
      auto* label = WidgetOf<QLabel>(popup);
      ASSERT_NE(label, nullptr);
      EXPECT_TRUE(label->isVisible());
      EXPECT_EQ(label->text(), QString::fromUtf8("Tar du båten hem hinner du bada.\nTa med hatt."));
      EXPECT_EQ(Seen(popup, 3, 3), RGB(1, 2, 3));
      EXPECT_EQ(QApplication::activeWindow(), window);
      input();
      EXPECT_FALSE(label->isVisible());
      Pump([&] { return ::IsWindow(popup) == FALSE; });
      PumpAll();
      EXPECT_EQ(CountOf(WM_KEYDOWN), keys);
    }
    EXPECT_EQ(AskPopup(8), nullptr);
  });
}

}  // namespace
