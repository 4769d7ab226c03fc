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
#include "menu_fixture.h"

namespace {

using ::testing::ElementsAre;

constexpr COLORREF kPaint = RGB(12, 200, 34);
constexpr LONG kCheckColumn = 15;

SIZE SizeOf(UINT command) {
  return {static_cast<LONG>(80 + command), 24};
}

struct Drawn {
  UINT command = 0;
  UINT action = 0;
  UINT state = 0;
  RECT area{};
  HMENU menu = nullptr;
  ULONG_PTR data = 0;
};

// What the owner has been asked for; used on the window thread alone.
std::vector<UINT> measured;
std::vector<Drawn> drawn;

LRESULT CALLBACK OwnerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_MEASUREITEM) {
    auto* item = reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
    EXPECT_EQ(item->CtlType, ODT_MENU);
    measured.push_back(item->itemID);
    item->itemWidth = static_cast<UINT>(SizeOf(item->itemID).cx);
    item->itemHeight = static_cast<UINT>(SizeOf(item->itemID).cy);
    return TRUE;
  }
  if (message == WM_DRAWITEM) {
    const auto* item = reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
    EXPECT_EQ(item->CtlType, ODT_MENU);
    drawn.push_back({item->itemID, item->itemAction, item->itemState, item->rcItem,
                     reinterpret_cast<HMENU>(item->hwndItem), item->itemData});
    LOGBRUSH colour{};
    colour.lbColor = kPaint;
    const HBRUSH brush = ::CreateBrushIndirect(&colour);
    ::FillRect(item->hDC, &item->rcItem, brush);
    ::DeleteObject(brush);
    return TRUE;
  }
  return ::DefWindowProcW(window, message, wParam, lParam);
}

std::optional<Drawn> LastDrawn(UINT command) {
  for (auto each = drawn.rbegin(); each != drawn.rend(); ++each) {
    if (each->command == command) return *each;
  }
  return std::nullopt;
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
  UINT Track(LONG x = 50, LONG y = 60, UINT flags = 0) const {
    return static_cast<UINT>(
        ::TrackPopupMenuEx(menu_.Get(), flags | TPM_RETURNCMD, x, y, owner_.Get(), nullptr));
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

QMenu* OpenMenu() {
  return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

// The menu that is open and has that item; the submenu once that is open.
QMenu* AwaitMenu(DesktopScript& user, const QString& item) {
  user.Await(
      [&] {
        const QMenu* menu = OpenMenu();
        return menu != nullptr && menu->isVisible() && menu->actions()[0]->text() == item;
      },
      "menu that begins with " + item);
  QMenu* menu = nullptr;
  user.Do([&] { menu = OpenMenu(); });
  return menu;
}

void Press(DesktopScript& user, std::vector<Qt::Key> keys) {
  for (const Qt::Key key : keys)
    user.Do([key] { QTest::keyClick(OpenMenu(), key); });
}

void ClickItem(DesktopScript& user, QMenu* menu, int position) {
  user.Do([&] {
    const QRect area = menu->actionGeometry(menu->actions()[position]);
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, area.center());
  });
}

TEST(MenuOnDesktop, TheItemThatIsClickedIsTheAnswer) {
  Desktop::Run([](Desktop& desktop) {
    const DesktopScript user(
        [](DesktopScript& script) { ClickItem(script, AwaitMenu(script, "Statistics"), 1); });
    EXPECT_EQ(desktop.Track(), 13u);
  });
}

TEST(MenuOnDesktop, KeysChooseToo) {
  struct {
    std::vector<Qt::Key> keys;
    UINT answer;
  } const kCases[] = {{{Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}, 13},
                      {{Qt::Key_Up, Qt::Key_Return}, 1},
                      {{Qt::Key_C}, 13},
                      {{Qt::Key_S, Qt::Key_S, Qt::Key_Return}, 1},
                      {{Qt::Key_Escape}, 0}};
  Desktop::Run([&](Desktop& desktop) {
    for (const auto& each : kCases) {
      const DesktopScript user([&](DesktopScript& script) {
        AwaitMenu(script, "Statistics");
        Press(script, each.keys);
      });
      EXPECT_EQ(desktop.Track(), each.answer);
    }
  });
}

TEST(MenuOnDesktop, AClickOutsideChoosesNothing) {
  Desktop::Run([](Desktop& desktop) {
    const DesktopScript user([](DesktopScript& script) {
      QMenu* menu = AwaitMenu(script, "Statistics");
      script.Do([&] { QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, {-30, -30}); });
    });
    EXPECT_EQ(desktop.Track(), 0u);
  });
}

TEST(MenuOnDesktop, ASubmenuOpensAndIsChosenFrom) {
  Desktop::Run([](Desktop& desktop) {
    {
      const DesktopScript user([](DesktopScript& script) {
        ClickItem(script, AwaitMenu(script, "Statistics"), 3);
        ClickItem(script, AwaitMenu(script, "Topics"), 1);
      });
      EXPECT_EQ(desktop.Track(), 12u);
    }
    const DesktopScript user([](DesktopScript& script) {
      AwaitMenu(script, "Statistics");
      Press(script, {Qt::Key_H});
      AwaitMenu(script, "Topics");
      Press(script, {Qt::Key_Escape});
      AwaitMenu(script, "Statistics");
      Press(script, {Qt::Key_Escape});
    });
    EXPECT_EQ(desktop.Track(), 0u);
  });
}

TEST(MenuOnDesktop, TheOwnerMeasuresEachItemOnceWhenItsMenuOpens) {
  Desktop::Run(
      [](Desktop& desktop) {
        const DesktopScript user([](DesktopScript& script) {
          AwaitMenu(script, "Statistics");
          script.Do([] { EXPECT_THAT(measured, ElementsAre(5, 13, 2, 1)); });
          Press(script, {Qt::Key_H});
          AwaitMenu(script, "Topics");
          Press(script, {Qt::Key_Escape, Qt::Key_Escape});
        });
        desktop.Track();
        EXPECT_THAT(measured, ElementsAre(5, 13, 2, 1, 11, 12));
      },
      MFT_OWNERDRAW);
}

TEST(MenuOnDesktop, TheOwnerDrawsItemsWhereTheyAre) {
  Desktop::Run(
      [](Desktop& desktop) {
        const DesktopScript user([](DesktopScript& script) {
          QMenu* menu = AwaitMenu(script, "Statistics");
          script.Await([] { return LastDrawn(1).has_value(); }, "drawing of the last item");
          script.Do([&] {
            const QImage picture = menu->grab().toImage();
            for (QAction* action : menu->actions()) {
              const QPoint centre = menu->actionGeometry(action).center();
              EXPECT_EQ(picture.pixelColor(centre) == QColor(12, 200, 34), !action->isSeparator());
            }
          });
          Press(script, {Qt::Key_Escape});
        });
        desktop.Track();
        const Drawn first = LastDrawn(5).value_or(Drawn{});
        // As wide as the widest and the column of check marks.
        EXPECT_EQ(first.area.right - first.area.left, SizeOf(13).cx + kCheckColumn);
        EXPECT_EQ(first.area.bottom - first.area.top, SizeOf(5).cy);
        EXPECT_EQ(first.menu, desktop.Menu());
        const Drawn second = LastDrawn(13).value_or(Drawn{});
        EXPECT_EQ(second.area.top, first.area.bottom);
      },
      MFT_OWNERDRAW);
}

TEST(MenuOnDesktop, TheOwnerHearsOfSelectionAndDefault) {
  Desktop::Run(
      [](Desktop& desktop) {
        ::SetMenuDefaultItem(desktop.Menu(), 13, FALSE);
        const DesktopScript user([](DesktopScript& script) {
          AwaitMenu(script, "Statistics");
          script.Await([] { return LastDrawn(1).has_value(); }, "drawing of the last item");
          script.Do([] {
            EXPECT_EQ(LastDrawn(5)->state, 0u);
            EXPECT_EQ(LastDrawn(5)->action, ODA_DRAWENTIRE);
            EXPECT_EQ(LastDrawn(13)->state, ODS_DEFAULT);
          });
          Press(script, {Qt::Key_Down});
          script.Await([] { return LastDrawn(5)->state == ODS_SELECTED; }, "selected item");
          script.Do([] { EXPECT_EQ(LastDrawn(5)->action, ODA_DRAWENTIRE | ODA_SELECT); });
          Press(script, {Qt::Key_Down});
          script.Await(
              [] {
                return LastDrawn(5)->state == 0u &&
                       LastDrawn(13)->state == (ODS_DEFAULT | ODS_SELECTED);
              },
              "selection that has moved on");
          Press(script, {Qt::Key_Escape});
        });
        desktop.Track();
      },
      MFT_OWNERDRAW);
}

TEST(MenuOnDesktop, AMenuIsEndedFromOutsideAndSwallowsTheQuitMessage) {
  using Ending = void (*)(HWND owner);
  const Ending kEndings[] = {
      [](HWND) { ::PostQuitMessage(6); },
      [](HWND owner) { ::PostMessageW(owner, WM_CANCELMODE, 0, 0); },
      [](HWND owner) { ::EnableWindow(owner, FALSE); },
      [](HWND owner) { ::DestroyWindow(owner); },
  };
  Desktop::Run([&](Desktop& desktop) {
    const HWND owner = desktop.Owner();
    for (const Ending end : kEndings) {
      const DesktopScript user([&](DesktopScript& script) {
        AwaitMenu(script, "Statistics");
        script.Do([&] { end(owner); });
      });
      EXPECT_EQ(desktop.Track(), 0u);
      EXPECT_EQ(OpenMenu(), nullptr);
      MSG message{};
      EXPECT_FALSE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    }
  });
}

TEST(MenuOnDesktop, CancellingAnotherWindowLeavesTheMenuOpen) {
  Desktop::Run([](Desktop& desktop) {
    const HiddenWindow other;
    const DesktopScript user([&](DesktopScript& script) {
      QMenu* menu = AwaitMenu(script, "Statistics");
      script.Do([&] { ::SendMessageW(other.Get(), WM_CANCELMODE, 0, 0); });
      ClickItem(script, menu, 1);
    });
    EXPECT_EQ(desktop.Track(), 13u);
  });
}

TEST(MenuOnDesktop, AMenuIsAlignedToItsPlaceAndKeptOnTheScreen) {
  const auto areaOf = [](Desktop& desktop, LONG x, LONG y, UINT flags) {
    QRect area;
    const DesktopScript user([&](DesktopScript& script) {
      QMenu* menu = AwaitMenu(script, "Statistics");
      script.Do([&] { area = menu->geometry(); });
      Press(script, {Qt::Key_Escape});
    });
    desktop.Track(x, y, flags);
    return area;
  };
  Desktop::Run([&](Desktop& desktop) {
    EXPECT_EQ(areaOf(desktop, 50, 60, 0).topLeft(), QPoint(50, 60));
    const QRect area = areaOf(desktop, 400, 300, TPM_RIGHTALIGN | TPM_BOTTOMALIGN);
    EXPECT_EQ(area.bottomRight() + QPoint(1, 1), QPoint(400, 300));
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    EXPECT_TRUE(screen.contains(areaOf(desktop, 9000, 9000, 0)));
    EXPECT_TRUE(screen.contains(areaOf(desktop, -900, -900, 0)));
  });
}

TEST(MenuOnDesktop, AMenuOfAnotherThreadOpensOnTheWindowThread) {
  Desktop::Run([](Desktop& desktop) {
    const DesktopScript user(
        [](DesktopScript& script) { ClickItem(script, AwaitMenu(script, "Statistics"), 4); });
    const DWORD windowThread = ::GetCurrentThreadId();
    auto answer = std::async(std::launch::async, [&] {
      const UINT command = desktop.Track();
      ::PostThreadMessageW(windowThread, WM_APP, 0, 0);
      return command;
    });
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0 && message.message != WM_APP)
      ::DispatchMessageW(&message);
    EXPECT_EQ(answer.get(), 1u);
  });
}

}  // namespace
