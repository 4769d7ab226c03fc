// Popup menus on Qt's offscreen platform, used with real clicks and keys.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QScreen>
#include <QTest>
#include <future>
#include <map>
#include <thread>
#include <vector>

#include "desktop/dialog_driver.h"
#include "platform/kit/hidden_window.h"
#include "platform/menu/menu_fixture.h"

namespace {

using ::testing::ElementsAre;

constexpr COLORREF kPaint = RGB(12, 200, 34);
constexpr LONG kCheckColumn = 15;
constexpr LONG kWidth = 80;  // and the command's number
constexpr LONG kHeight = 24;

// What the owner has been asked for, the last drawing of each command; on the window thread alone.
std::vector<UINT> measured;
std::map<UINT, DRAWITEMSTRUCT> drawn;

LRESULT CALLBACK OwnerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_MEASUREITEM) {
    auto* item = reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
    EXPECT_EQ(item->CtlType, ODT_MENU);
    measured.push_back(item->itemID);
    item->itemWidth = kWidth + item->itemID;
    item->itemHeight = kHeight;
    return TRUE;
  }
  if (message == WM_DRAWITEM) {
    const auto* item = reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
    EXPECT_EQ(item->CtlType, ODT_MENU);
    drawn[item->itemID] = *item;
    const HBRUSH brush = ::CreateSolidBrush(kPaint);
    ::FillRect(item->hDC, &item->rcItem, brush);
    ::DeleteObject(brush);
    return TRUE;
  }
  return ::DefWindowProcW(window, message, wParam, lParam);
}

QMenu* OpenMenu() {
  return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

// The menu that is open and begins with that item; the submenu once that is open.
QMenu* AwaitMenu(DesktopScript& script, const QString& item) {
  QMenu* menu = nullptr;
  const auto isOpen = [&] {
    menu = OpenMenu();
    return menu != nullptr && menu->isVisible() && menu->actions()[0]->text() == item;
  };
  script.Await(isOpen, "menu that begins with " + item);
  return menu;
}

// What the user does with the menu that has opened.
using User = std::function<void(DesktopScript&, QMenu*)>;

User Press(std::vector<Qt::Key> keys) {
  return [keys](DesktopScript& script, QMenu*) {
    for (const Qt::Key key : keys)
      script.Do([key] { QTest::keyClick(OpenMenu(), key); });
  };
}

User Click(int position) {
  return [position](DesktopScript& script, QMenu* menu) {
    script.Do([&] {
      const QRect area = menu->actionGeometry(menu->actions()[position]);
      QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, area.center());
    });
  };
}

// A menu of three items, a separator and a submenu, on a desktop that lasts as long as the work.
class Desktop {
 public:
  static void Run(const std::function<void(Desktop&)>& work, UINT type = MFT_STRING) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    measured.clear();
    drawn.clear();
    std::thread([&] {
      Desktop desktop(type);
      work(desktop);
    }).join();
  }

  HWND Owner() const { return owner_.Get(); }
  HMENU Menu() const { return menu_.Get(); }
  UINT Track(const User& user, POINT place = {50, 60}, UINT flags = 0) const {
    const DesktopScript script([&](DesktopScript& it) { user(it, AwaitMenu(it, "Statistics")); });
    return static_cast<UINT>(::TrackPopupMenuEx(menu_.Get(), flags | TPM_RETURNCMD, place.x,
                                                place.y, owner_.Get(), nullptr));
  }

 private:
  explicit Desktop(UINT type) : owner_(OwnerProc) {
    const HMENU submenu = ::CreatePopupMenu();
    InsertItem(submenu, 11, L"Topics", nullptr, type);
    InsertItem(submenu, 12, L"About", nullptr, type);
    InsertItem(menu_.Get(), 5, L"Statistics", nullptr, type);
    InsertItem(menu_.Get(), 13, L"Connection", nullptr, type);
    InsertItem(menu_.Get(), 0, L"-");
    InsertItem(menu_.Get(), 2, L"Help", submenu, type);
    InsertItem(menu_.Get(), 1, L"Stop", nullptr, type);
  }

  const HiddenWindow owner_;
  const OwnedMenu menu_;
};

TEST(MenuOnDesktop, ClicksAndKeysChoose) {
  const User clickOutside = [](DesktopScript& script, QMenu* menu) {
    script.Do([&] { QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, {-30, -30}); });
  };
  const User clickInSubmenu = [](DesktopScript& script, QMenu* menu) {
    Click(3)(script, menu);
    Click(1)(script, AwaitMenu(script, "Topics"));
  };
  const User leaveSubmenu = [](DesktopScript& script, QMenu* menu) {
    Press({Qt::Key_H})(script, menu);
    Press({Qt::Key_Escape})(script, AwaitMenu(script, "Topics"));
    Press({Qt::Key_Escape})(script, AwaitMenu(script, "Statistics"));
  };
  const std::tuple<const char*, User, UINT> cases[] = {
      {"a click", Click(1), 13},
      {"a click outside", clickOutside, 0},
      {"the arrow down", Press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}), 13},
      {"the arrow up", Press({Qt::Key_Up, Qt::Key_Return}), 1},
      {"the only initial", Press({Qt::Key_C}), 13},
      {"one of two initials", Press({Qt::Key_S, Qt::Key_S, Qt::Key_Return}), 1},
      {"escape", Press({Qt::Key_Escape}), 0},
      {"a click in the submenu", clickInSubmenu, 12},
      {"leaving the submenu", leaveSubmenu, 0},
  };
  Desktop::Run([&](Desktop& desktop) {
    for (const auto& [use, user, answer] : cases)
      EXPECT_EQ(desktop.Track(user), answer) << use;
  });
}

TEST(MenuOnDesktop, TheOwnerMeasuresItemsOnceAndDrawsThemAsTheyAre) {
  const User user = [&](DesktopScript& script, QMenu* menu) {
    script.Await([] { return drawn.contains(1); }, "drawing of the last item");
    script.Do([&] {
      EXPECT_THAT(measured, ElementsAre(5, 13, 2, 1)) << "a submenu waits until it opens";
      const QImage picture = menu->grab().toImage();
      for (QAction* action : menu->actions()) {
        const QPoint centre = menu->actionGeometry(action).center();
        EXPECT_EQ(picture.pixelColor(centre) == QColor(12, 200, 34), !action->isSeparator());
      }
      EXPECT_EQ(drawn[5].itemState, 0u);
      EXPECT_EQ(drawn[5].itemAction, ODA_DRAWENTIRE);
      EXPECT_EQ(drawn[13].itemState, ODS_DEFAULT);
    });
    Press({Qt::Key_Down})(script, menu);
    script.Await([] { return drawn[5].itemState == ODS_SELECTED; }, "selected item");
    script.Do([] { EXPECT_EQ(drawn[5].itemAction, ODA_DRAWENTIRE | ODA_SELECT); });
    Press({Qt::Key_Down})(script, menu);
    const auto hasMovedOn = [] {
      return drawn[5].itemState == 0 && drawn[13].itemState == (ODS_DEFAULT | ODS_SELECTED);
    };
    script.Await(hasMovedOn, "selection that has moved on");
    Press({Qt::Key_H})(script, menu);
    Press({Qt::Key_Escape, Qt::Key_Escape})(script, AwaitMenu(script, "Topics"));
  };
  const auto work = [&](Desktop& desktop) {
    ::SetMenuDefaultItem(desktop.Menu(), 13, FALSE);
    desktop.Track(user);
    EXPECT_EQ(reinterpret_cast<HMENU>(drawn[5].hwndItem), desktop.Menu());
  };
  Desktop::Run(work, MFT_OWNERDRAW);
  EXPECT_THAT(measured, ElementsAre(5, 13, 2, 1, 11, 12));
  const RECT first = drawn[5].rcItem;
  // As wide as the widest and the column of check marks.
  EXPECT_EQ(first.right - first.left, kWidth + 13 + kCheckColumn);
  EXPECT_EQ(first.bottom - first.top, kHeight);
  EXPECT_EQ(drawn[13].rcItem.top, first.bottom);
}

TEST(MenuOnDesktop, AMenuIsEndedFromOutsideAndSwallowsTheQuitMessage) {
  const std::function<void(HWND owner)> endings[] = {
      [](HWND) { ::PostQuitMessage(6); },
      [](HWND owner) { ::PostMessageW(owner, WM_CANCELMODE, 0, 0); },
      [](HWND owner) { ::EnableWindow(owner, FALSE); },
      [](HWND owner) { ::DestroyWindow(owner); },
  };
  Desktop::Run([&](Desktop& desktop) {
    const HiddenWindow other;
    for (const auto& end : endings) {
      const User user = [&](DesktopScript& script, QMenu* menu) {
        script.Do([&] {
          ::SendMessageW(other.Get(), WM_CANCELMODE, 0, 0);
          EXPECT_EQ(OpenMenu(), menu) << "another window's is no matter";
          end(desktop.Owner());
        });
      };
      EXPECT_EQ(desktop.Track(user), 0u);
      EXPECT_EQ(OpenMenu(), nullptr);
      MSG message{};
      EXPECT_FALSE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    }
  });
}

TEST(MenuOnDesktop, AMenuIsAlignedToItsPlaceAndKeptOnTheScreen) {
  QRect area;
  const User look = [&](DesktopScript& script, QMenu* menu) {
    script.Do([&] { area = menu->geometry(); });
    Press({Qt::Key_Escape})(script, menu);
  };
  Desktop::Run([&](Desktop& desktop) {
    desktop.Track(look, {50, 60});
    EXPECT_EQ(area.topLeft(), QPoint(50, 60));
    desktop.Track(look, {400, 300}, TPM_RIGHTALIGN | TPM_BOTTOMALIGN);
    EXPECT_EQ(area.bottomRight() + QPoint(1, 1), QPoint(400, 300));
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    for (const POINT place : {POINT{9000, 9000}, POINT{-900, -900}}) {
      desktop.Track(look, place);
      EXPECT_TRUE(screen.contains(area)) << place.x;
    }
  });
}

TEST(MenuOnDesktop, AMenuOfAnotherThreadOpensOnTheWindowThread) {
  Desktop::Run([](Desktop& desktop) {
    auto answer = std::async(std::launch::async, [&] { return desktop.Track(Click(4)); });
    MSG message{};
    while (answer.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
      if (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&message);
    }
    EXPECT_EQ(answer.get(), 1u);
  });
}

}  // namespace
