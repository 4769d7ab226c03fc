// Tabs, chosen by clicks and keys that the parent may refuse.
#include <QTabBar>

#include "platform/controls/control_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kChanging = "notify 1 -552";
constexpr const char* kChanged = "notify 1 -551";

class TabTest : public ControlTest {
 protected:
  TabTest() {
    for (const wchar_t* text : {L"General", L"Users", L"Advanced"})
      Insert(text, 99);
  }
  LRESULT Insert(std::wstring text, WPARAM place) {
    TCITEMW item{};
    item.mask = TCIF_TEXT | TCIF_PARAM;
    item.pszText = text.data();
    item.lParam = static_cast<LPARAM>(text.size());
    return Send(tabs_, TCM_INSERTITEMW, place, &item);
  }
  QTabBar* Bar() const { return WidgetOf(tabs_)->findChild<QTabBar*>(); }
  int Chosen() const {
    const auto chosen = static_cast<int>(Send(tabs_, TCM_GETCURSEL));
    EXPECT_EQ(Bar()->currentIndex(), chosen);
    return chosen;
  }
  void ClickTab(int index) {
    QTest::mouseClick(Bar(), Qt::LeftButton, {}, Bar()->tabRect(index).center());
  }

  HWND tabs_ = Make(WC_TABCONTROL, 0, L"", 300, 200);
};

TEST_F(TabTest, TheFirstTabIsChosenAndNobodyIsNotified) {
  EXPECT_EQ(Send(tabs_, TCM_GETITEMCOUNT), 3);
  EXPECT_EQ(Chosen(), 0);
  EXPECT_EQ(Send(tabs_, TCM_SETCURSEL, 2), 0) << "the tab before";
  EXPECT_EQ(Send(tabs_, TCM_SETCURSEL, 3), -1);
  EXPECT_EQ(Chosen(), 2);
  EXPECT_THAT(Notified(), IsEmpty());
}

TEST_F(TabTest, AClickAsksAndThenTellsUnlessItIsRefused) {
  int chosenWhenAsked = -1;
  onNotify = [&](const NMHDR& header) {
    if (header.code == TCN_SELCHANGING) chosenWhenAsked = Chosen();
  };
  ClickTab(1);
  EXPECT_THAT(NotifiedAtOnce(), IsEmpty()) << "told inside the desktop's event";
  EXPECT_THAT(Notified(), ElementsAre(kChanging, kChanged));
  EXPECT_EQ(chosenWhenAsked, 0);
  EXPECT_EQ(Chosen(), 1);
  ClickTab(1);
  EXPECT_THAT(Notified(), IsEmpty()) << "the chosen tab is no change";
  answer = TRUE;
  ClickTab(2);
  EXPECT_THAT(Notified(), ElementsAre(kChanging));
  EXPECT_EQ(Chosen(), 1);
}

TEST_F(TabTest, ArrowKeysGoToTheNeighbour) {
  QTest::keyClick(Bar(), Qt::Key_Left);
  EXPECT_THAT(Notified(), IsEmpty());
  QTest::keyClick(Bar(), Qt::Key_Right);
  EXPECT_THAT(Notified(), ElementsAre(kChanging, kChanged));
  EXPECT_EQ(Chosen(), 1);
}

TEST_F(TabTest, ATabInFrontKeepsTheChoice) {
  EXPECT_EQ(Insert(L"New", 0), 0);
  EXPECT_EQ(Chosen(), 1);
  wchar_t text[4];
  TCITEMW item{};
  item.mask = TCIF_TEXT | TCIF_PARAM;
  item.pszText = text;
  item.cchTextMax = 4;
  ASSERT_TRUE(Send(tabs_, TCM_GETITEMW, 1, &item));
  EXPECT_STREQ(text, L"Gen");
  EXPECT_EQ(item.lParam, 7);
  EXPECT_FALSE(Send(tabs_, TCM_GETITEMW, 9, &item));
}

TEST_F(TabTest, TheAreaAndTheWindowAreConvertedBothWays) {
  RECT area = {0, 0, 300, 200};
  Send(tabs_, TCM_ADJUSTRECT, FALSE, &area);
  EXPECT_GT(area.top, 15) << "the tabs have no room";
  EXPECT_GT(area.left, 0);
  EXPECT_LT(area.bottom, 200);
  EXPECT_GE(area.top, Bar()->geometry().bottom());
  Send(tabs_, TCM_ADJUSTRECT, TRUE, &area);
  EXPECT_THAT(EdgesOf(area), ElementsAre(0, 0, 300, 200));
}

}  // namespace
