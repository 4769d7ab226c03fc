// Drop-down lists: their items, and what the user chooses.
#include <QAbstractItemView>
#include <QComboBox>

#include "platform/controls/control_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ComboBoxTest : public ControlTest {
 protected:
  HWND Combo(DWORD style = 0) {
    return Make(L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL | style, L"", 200, 120);
  }
  static LRESULT Add(HWND combo, const wchar_t* text) { return Send(combo, CB_ADDSTRING, 0, text); }
  static HWND Filled(HWND combo) {
    for (const wchar_t* text : {L"day", L"week", L"month"})
      Add(combo, text);
    return combo;
  }
  // As the control knows them; the widget must show the same.
  static std::vector<std::wstring> Items(HWND combo) {
    std::vector<std::wstring> items;
    const auto* box = WidgetOf<QComboBox>(combo);
    for (int index = 0; index < Send(combo, CB_GETCOUNT); ++index) {
      const auto place = static_cast<WPARAM>(index);
      std::wstring text(static_cast<std::size_t>(Send(combo, CB_GETLBTEXTLEN, place)) + 1, L'?');
      Send(combo, CB_GETLBTEXT, place, text.data());
      text.pop_back();
      EXPECT_EQ(box->itemText(index).toStdWString(), text);
      items.push_back(text);
    }
    EXPECT_EQ(box->count(), Send(combo, CB_GETCOUNT));
    return items;
  }
  static int Chosen(HWND combo) {
    const auto chosen = static_cast<int>(Send(combo, CB_GETCURSEL));
    EXPECT_EQ(WidgetOf<QComboBox>(combo)->currentIndex(), chosen);
    return chosen;
  }
};

TEST_F(ComboBoxTest, NothingIsChosenUntilSomebodyChooses) {
  HWND combo = Filled(Combo());
  EXPECT_THAT(Items(combo), ElementsAre(L"day", L"week", L"month"));
  EXPECT_EQ(Chosen(combo), -1);
  EXPECT_EQ(TextOf(combo), L"");
}

TEST_F(ComboBoxTest, ChoosingByMessageTellsNobody) {
  HWND combo = Filled(Combo());
  EXPECT_EQ(Send(combo, CB_SETCURSEL, 1), 1);
  EXPECT_EQ(Chosen(combo), 1);
  EXPECT_EQ(TextOf(combo), L"week");
  EXPECT_EQ(Send(combo, CB_SETCURSEL, static_cast<WPARAM>(-1)), CB_ERR);
  EXPECT_EQ(Chosen(combo), -1);
  EXPECT_EQ(Send(combo, CB_SETCURSEL, 7), CB_ERR);
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(ComboBoxTest, TheUsersChoiceIsTold) {
  HWND combo = Filled(Combo());
  Send(combo, CB_SETCURSEL, 0);
  Press(combo, Qt::Key_Down);
  EXPECT_THAT(ToldAtOnce(), IsEmpty()) << "told inside the desktop's event";
  EXPECT_THAT(Told(), ElementsAre("command 1 1"));
  EXPECT_EQ(Chosen(combo), 1);
}

TEST_F(ComboBoxTest, AClickInTheListChooses) {
  HWND combo = Filled(Combo());
  auto* box = WidgetOf<QComboBox>(combo);
  box->showPopup();
  QAbstractItemView* list = box->view();
  const QRect place = list->visualRect(box->model()->index(2, 0));
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
  // The list does not take a click that comes at once for the choice of an item.
  if (list->isVisible()) {
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
  }
  EXPECT_THAT(Told(), ElementsAre("command 1 1"));
  EXPECT_EQ(TextOf(combo), L"month");
}

TEST_F(ComboBoxTest, ItemsComeAndGoWithTheirDataAndTheChoice) {
  HWND combo = Filled(Combo());
  Send(combo, CB_SETITEMDATA, 1, 77);
  Send(combo, CB_SETCURSEL, 1);
  EXPECT_EQ(Send(combo, CB_INSERTSTRING, 0, L"hour"), 0);
  EXPECT_EQ(Chosen(combo), 2);
  EXPECT_EQ(Send(combo, CB_GETITEMDATA, 2), 77);
  EXPECT_EQ(Send(combo, CB_INSERTSTRING, static_cast<WPARAM>(-1), L"year"), 4);
  EXPECT_EQ(Send(combo, CB_INSERTSTRING, 9, L"never"), CB_ERR);
  EXPECT_THAT(Items(combo), ElementsAre(L"hour", L"day", L"week", L"month", L"year"));
  EXPECT_EQ(Send(combo, CB_DELETESTRING, 0), 4);
  EXPECT_EQ(TextOf(combo), L"week");
  EXPECT_EQ(Send(combo, CB_DELETESTRING, 1), 3);
  EXPECT_EQ(Chosen(combo), -1) << "the chosen item was deleted";
  EXPECT_EQ(Send(combo, CB_DELETESTRING, 3), CB_ERR);
  Send(combo, CB_RESETCONTENT);
  EXPECT_THAT(Items(combo), IsEmpty());
  EXPECT_EQ(Send(combo, CB_GETITEMDATA, 0), CB_ERR);
  EXPECT_EQ(Send(combo, CB_GETLBTEXTLEN, 0), CB_ERR);
}

TEST_F(ComboBoxTest, SortedItemsFindTheirPlaces) {
  HWND combo = Combo(CBS_SORT);
  EXPECT_EQ(Add(combo, L"beta"), 0);
  EXPECT_EQ(Add(combo, L"Alpha"), 0);
  EXPECT_EQ(Add(combo, L"gamma"), 2);
  EXPECT_EQ(Send(combo, CB_INSERTSTRING, 0, L"zeta"), 0) << "inserted items are not sorted";
  EXPECT_THAT(Items(combo), ElementsAre(L"zeta", L"Alpha", L"beta", L"gamma"));
}

struct Search {
  UINT message;
  int after;
  const wchar_t* text;
  LRESULT expected;
};
constexpr Search kSearches[] = {
    {CB_FINDSTRINGEXACT, -1, L"WEEK", 1}, {CB_FINDSTRINGEXACT, -1, L"wee", CB_ERR},
    {CB_FINDSTRINGEXACT, 1, L"day", 0},   {CB_FINDSTRINGEXACT, 1, L"week", 1},
    {CB_FINDSTRING, -1, L"w", 1},         {CB_FINDSTRING, -1, L"year", CB_ERR},
    {CB_SELECTSTRING, -1, L"mon", 2},     {CB_SELECTSTRING, -1, L"x", CB_ERR},
};

TEST_F(ComboBoxTest, SearchesIgnoreCaseAndGoRound) {
  HWND combo = Filled(Combo());
  for (const Search& each : kSearches) {
    SCOPED_TRACE(::testing::PrintToString(std::wstring(each.text)));
    EXPECT_EQ(Send(combo, each.message, static_cast<WPARAM>(each.after), each.text), each.expected);
  }
  EXPECT_EQ(Chosen(combo), 2) << "a search that fails keeps the choice";
}

TEST_F(ComboBoxTest, TheHeightItIsGivenIsThatOfItsList) {
  HWND combo = Combo();
  RECT place{};
  ::GetWindowRect(combo, &place);
  const int height = place.bottom - place.top;
  EXPECT_GE(height, 20);
  EXPECT_LE(height, 30);
  EXPECT_EQ(WidgetOf(combo)->height(), height);
  ::SetWindowPos(combo, nullptr, 0, 0, 150, 300, SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_EQ(WidgetOf(combo)->size(), QSize(150, height));
}

TEST_F(ComboBoxTest, OtherKindsAreNotMade) {
  constexpr DWORD kDropDown = 0x0002;
  EXPECT_EQ(Make(L"COMBOBOX", kDropDown), nullptr);
}

}  // namespace
