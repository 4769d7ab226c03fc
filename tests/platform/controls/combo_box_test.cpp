// Drop-down lists: their items, and what the user chooses.
#include <QAbstractItemView>
#include <QComboBox>

#include "platform/controls/control_test.h"
#include "platform/kernel/locale_source.h"

namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

class ComboBoxTest : public ControlTest {
 protected:
  // Of the items "day", "week" and "month", unless it sorts.
  HWND Combo(DWORD style = 0) {
    HWND combo = Make(L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL | style, L"", 200, 120);
    for (const wchar_t* text : {L"day", L"week", L"month"})
      if ((style & CBS_SORT) == 0) Add(combo, text);
    return combo;
  }
  static LRESULT Add(HWND combo, const wchar_t* text) { return Send(combo, CB_ADDSTRING, 0, text); }
  // As the control knows them; the widget must show the same.
  static std::vector<std::wstring> Items(HWND combo) {
    std::vector<std::wstring> items;
    const auto* box = WidgetOf<QComboBox>(combo);
    EXPECT_EQ(box->count(), Send(combo, CB_GETCOUNT));
    for (int index = 0; index < box->count(); ++index) {
      const auto place = static_cast<WPARAM>(index);
      std::wstring text(static_cast<std::size_t>(Send(combo, CB_GETLBTEXTLEN, place)) + 1, L'?');
      Send(combo, CB_GETLBTEXT, place, text.data());
      text.pop_back();
      EXPECT_EQ(box->itemText(index).toStdWString(), text);
      items.push_back(text);
    }
    return items;
  }
  static int Chosen(HWND combo) {
    const auto chosen = static_cast<int>(Send(combo, CB_GETCURSEL));
    EXPECT_EQ(WidgetOf<QComboBox>(combo)->currentIndex(), chosen);
    return chosen;
  }

  HWND combo_ = Combo();
};

TEST_F(ComboBoxTest, NothingIsChosenUntilSomebodyChoosesAndMessagesNotifyNobody) {
  EXPECT_THAT(Items(combo_), ElementsAre(L"day", L"week", L"month"));
  EXPECT_EQ(Chosen(combo_), -1);
  EXPECT_EQ(TextOf(combo_), L"");
  EXPECT_EQ(Send(combo_, CB_SETCURSEL, 1), 1);
  EXPECT_EQ(Chosen(combo_), 1);
  EXPECT_EQ(TextOf(combo_), L"week");
  EXPECT_EQ(Send(combo_, CB_SETCURSEL, static_cast<WPARAM>(-1)), CB_ERR);
  EXPECT_EQ(Chosen(combo_), -1);
  EXPECT_EQ(Send(combo_, CB_SETCURSEL, 7), CB_ERR);
  EXPECT_THAT(Notified(), IsEmpty());
}

TEST_F(ComboBoxTest, TheUsersChoiceIsNotifiedByKeysAndClicks) {
  Send(combo_, CB_SETCURSEL, 0);
  Press(combo_, Qt::Key_Down);
  EXPECT_THAT(NotifiedAtOnce(), IsEmpty()) << "told inside the desktop's event";
  EXPECT_THAT(Notified(), ElementsAre("command 1 1"));
  EXPECT_EQ(Chosen(combo_), 1);
  auto* box = WidgetOf<QComboBox>(combo_);
  box->showPopup();
  QAbstractItemView* list = box->view();
  const QRect place = list->visualRect(box->model()->index(2, 0));
  // The list does not take a click that comes at once for the choice of an item.
  QTest::qWait(QApplication::doubleClickInterval() + 50);
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
  EXPECT_THAT(Notified(), ElementsAre("command 1 1"));
  EXPECT_EQ(TextOf(combo_), L"month");
}

TEST_F(ComboBoxTest, ItemsComeAndGoWithTheirDataAndTheChoice) {
  Send(combo_, CB_SETITEMDATA, 1, 77);
  Send(combo_, CB_SETCURSEL, 1);
  EXPECT_EQ(Send(combo_, CB_INSERTSTRING, 0, L"hour"), 0);
  EXPECT_EQ(Chosen(combo_), 2);
  EXPECT_EQ(Send(combo_, CB_GETITEMDATA, 2), 77);
  EXPECT_EQ(Send(combo_, CB_INSERTSTRING, static_cast<WPARAM>(-1), L"year"), 4);
  EXPECT_EQ(Send(combo_, CB_INSERTSTRING, 9, L"never"), CB_ERR);
  EXPECT_THAT(Items(combo_), ElementsAre(L"hour", L"day", L"week", L"month", L"year"));
  EXPECT_EQ(Send(combo_, CB_DELETESTRING, 0), 4);
  EXPECT_EQ(TextOf(combo_), L"week");
  EXPECT_EQ(Send(combo_, CB_DELETESTRING, 1), 3);
  EXPECT_EQ(Chosen(combo_), -1) << "the chosen item was deleted";
  EXPECT_EQ(Send(combo_, CB_DELETESTRING, 3), CB_ERR);
  Send(combo_, CB_RESETCONTENT);
  EXPECT_THAT(Items(combo_), IsEmpty());
  EXPECT_EQ(Send(combo_, CB_GETITEMDATA, 0), CB_ERR);
  EXPECT_EQ(Send(combo_, CB_GETLBTEXTLEN, 0), CB_ERR);
}

TEST_F(ComboBoxTest, SortedItemsFindTheirPlacesInTheOrderOfTheUsersLanguage) {
  HWND combo = Combo(CBS_SORT);
  EXPECT_EQ(Add(combo, L"beta"), 0);
  EXPECT_EQ(Add(combo, L"Alpha"), 0);
  EXPECT_EQ(Add(combo, L"gamma"), 2);
  EXPECT_EQ(Send(combo, CB_INSERTSTRING, 0, L"zeta"), 0) << "inserted items are not sorted";
  EXPECT_THAT(Items(combo), ElementsAre(L"zeta", L"Alpha", L"beta", L"gamma"));
  for (const auto& [language, expected] :
       {std::pair{LANGID{0x41D}, std::vector{L"adam", L"Zoe", L"\u00c5sa", L"\u00d6sten"}},
        {LANGID{0x409}, {L"adam", L"\u00c5sa", L"\u00d6sten", L"Zoe"}}}) {
    platform::SetLocaleChoice(platform::LocaleChoice{language, 0});
    combo = Combo(CBS_SORT);
    for (const wchar_t* name : {L"\u00d6sten", L"Zoe", L"adam", L"\u00c5sa"})
      Add(combo, name);
    EXPECT_THAT(Items(combo), ElementsAreArray(expected)) << language;
    EXPECT_NE(Send(combo, CB_FINDSTRINGEXACT, -1, L"\u00f6STEN"), CB_ERR);
  }
  platform::SetLocaleChoice({});
}

TEST_F(ComboBoxTest, SearchesIgnoreCaseAndGoRound) {
  for (const auto& [message, after, text, expected] :
       {std::tuple{CB_FINDSTRINGEXACT, -1, L"WEEK", 1},
        {CB_FINDSTRINGEXACT, -1, L"wee", CB_ERR},
        {CB_FINDSTRINGEXACT, 1, L"day", 0},
        {CB_FINDSTRINGEXACT, 1, L"week", 1},
        {CB_FINDSTRING, -1, L"w", 1},
        {CB_FINDSTRING, -1, L"year", CB_ERR},
        {CB_SELECTSTRING, -1, L"mon", 2},
        {CB_SELECTSTRING, -1, L"x", CB_ERR}}) {
    EXPECT_EQ(Send(combo_, message, static_cast<WPARAM>(after), text), expected)
        << ::testing::PrintToString(std::wstring(text));
  }
  EXPECT_EQ(Chosen(combo_), 2) << "a search that fails keeps the choice";
}

TEST_F(ComboBoxTest, TheHeightItIsGivenIsThatOfItsList) {
  const RECT place = PlaceOf(combo_);
  const int height = static_cast<int>(place.bottom - place.top);
  EXPECT_GE(height, 20);
  EXPECT_LE(height, 30);
  EXPECT_EQ(WidgetOf(combo_)->height(), height);
  ::SetWindowPos(combo_, nullptr, 0, 0, 150, 300, SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_EQ(WidgetOf(combo_)->size(), QSize(150, height));
}

}  // namespace
