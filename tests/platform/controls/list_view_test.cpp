// List views in report view: rows, columns, selection, check boxes and sorting.
#include <QClipboard>
#include <QHeaderView>
#include <QTreeView>
#include <cwchar>
#include <set>

#include "platform/controls/control_test.h"

namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr UINT kFocusedToo = LVIS_SELECTED | LVIS_FOCUSED;

class ListViewTest : public ControlTest {
 protected:
  static constexpr int kRowsInView = 4;

  ListViewTest() {
    List(LVS_SINGLESEL);
    onNotify = [this](const NMHDR& header) {
      const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
      if (header.code == LVN_ITEMCHANGED) changes_.push_back(change);
      if (header.code == LVN_COLUMNCLICK) clickedColumn_ = change.iSubItem;
      if (header.code == LVN_GETDISPINFOW) Answer(header);
      if (header.code == LVN_ODSTATECHANGED)
        ranges_.push_back(reinterpret_cast<const NMLVODSTATECHANGE&>(header));
    };
  }

  // Another list in place of the first one, with three rows that nobody was told of.
  void List(DWORD style) {
    if (list_ != nullptr) ::DestroyWindow(list_);
    list_ = Make(WC_LISTVIEW, LVS_REPORT | LVS_SHOWSELALWAYS | style, L"", 300, 150);
    AddColumn(L"User", 120);
    AddColumn(L"Bytes", 80);
    AddRow(L"anna", L"10", 10);
    AddRow(L"bert", L"9", 9);
    AddRow(L"carl", L"200", 200);
    Notified();
    changes_.clear();
  }
  // With as many rows of this program.
  void OwnerList(WPARAM rows) {
    List(LVS_OWNERDATA);
    EXPECT_TRUE(Send(list_, LVM_SETITEMCOUNT, rows, LPARAM{LVSICF_NOSCROLL}));
  }
  // The buffer is filled for the first column; for others the text is the program's.
  void Answer(const NMHDR& header) {
    auto& item = const_cast<NMLVDISPINFOW&>(reinterpret_cast<const NMLVDISPINFOW&>(header)).item;
    EXPECT_EQ(item.mask, LVIF_TEXT);
    asked_.insert(item.iItem);
    ownText_ = L"own " + std::to_wstring(item.iItem);
    if (item.iSubItem > 0) {
      item.pszText = ownText_.data();
    } else {
      std::swprintf(item.pszText, static_cast<std::size_t>(item.cchTextMax), L"row %d", item.iItem);
    }
  }
  void AddColumn(std::wstring title, int width) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.pszText = title.data();
    column.cx = width;
    column.fmt = LVCFMT_RIGHT;
    ListView_InsertColumn(list_, 99, &column);
  }
  static LVITEMW Item(UINT mask, int row, wchar_t* text) {
    LVITEMW item{};
    item.mask = mask;
    item.iItem = row;
    item.pszText = text;
    return item;
  }
  void AddRow(std::wstring user, std::wstring bytes, LPARAM data, int place = 99) {
    LVITEMW item = Item(LVIF_TEXT | LVIF_PARAM, place, user.data());
    item.lParam = data;
    const int row = ListView_InsertItem(list_, &item);
    ListView_SetItemText(list_, row, 1, bytes.data());
  }

  QTreeView* View() const { return WidgetOf<QTreeView>(list_); }
  std::wstring Cell(int row, int column) const {
    wchar_t text[50] = L"";
    ListView_GetItemText(list_, row, column, text, 50);
    const auto* model = View()->model();
    EXPECT_EQ(model->data(model->index(row, column)).toString().toStdWString(), text);
    return text;
  }
  std::vector<std::wstring> Users() const {
    std::vector<std::wstring> users;
    for (int row = 0; row < ListView_GetItemCount(list_); ++row)
      users.push_back(Cell(row, 0));
    EXPECT_EQ(View()->model()->rowCount(), ListView_GetItemCount(list_));
    return users;
  }
  bool LooksSelected(int row) const {
    const QRect cell = View()->visualRect(View()->model()->index(row, 0));
    const QPoint place = View()->viewport()->pos() + QPoint(cell.right() - 8, cell.center().y());
    // The row with the focus is not quite white, but lighter than any selected one.
    constexpr int kSelectedGray = 190;
    const COLORREF seen = Seen(list_, place.x(), place.y());
    return qGray(GetRValue(seen), GetGValue(seen), GetBValue(seen)) < kSelectedGray;
  }
  // As the control knows it and as the user sees it.
  std::vector<int> Selected() const {
    std::vector<int> rows;
    LRESULT next = -1;
    while ((next = Send(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(next), LVNI_SELECTED)) >= 0)
      rows.push_back(static_cast<int>(next));
    for (int row = 0; row < std::min(ListView_GetItemCount(list_), kRowsInView); ++row)
      EXPECT_EQ(LooksSelected(row), std::ranges::count(rows, row) == 1) << row;
    EXPECT_EQ(Send(list_, LVM_GETSELECTEDCOUNT), std::ssize(rows));
    return rows;
  }
  QPoint MiddleOf(int row) const {
    return View()->visualRect(View()->model()->index(row, 0)).center();
  }
  void RightClickRow(int row) {
    QTest::mouseClick(View()->viewport(), Qt::RightButton, {}, MiddleOf(row));
  }
  // In the middle of the row, or so far from its left edge.
  void ClickRow(int row, Qt::KeyboardModifiers modifiers = {}, int fromLeft = 0) {
    const QRect place = View()->visualRect(View()->model()->index(row, 0));
    const int x = fromLeft != 0 ? place.left() + fromLeft : place.center().x();
    QTest::mouseClick(View()->viewport(), Qt::LeftButton, modifiers, QPoint(x, place.center().y()));
  }
  bool SelectAll() const {
    LVITEMW item{};
    item.state = item.stateMask = LVIS_SELECTED;
    return Send(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), &item) != FALSE;
  }
  void ClickSecondHeading() {
    QHeaderView* header = View()->header();
    const QPoint place(header->sectionViewportPosition(1) + 20, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
  }

  HWND list_ = nullptr;
  std::vector<NMLISTVIEW> changes_;
  int clickedColumn_ = -1;
  // Of lists with rows of the program.
  std::vector<NMLVODSTATECHANGE> ranges_;
  std::set<int> asked_;
  std::wstring ownText_;
};

auto Change(int row, UINT before, UINT after) {
  return AllOf(Field(&NMLISTVIEW::iItem, row), Field(&NMLISTVIEW::uOldState, before),
               Field(&NMLISTVIEW::uNewState, after), Field(&NMLISTVIEW::uChanged, LVIF_STATE));
}

TEST_F(ListViewTest, RowsAreKeptInPlaceWithTheirCellsAndDeletingThemIsNotified) {
  AddRow(L"zoe", L"1", 1, 0);
  EXPECT_THAT(Users(), ElementsAre(L"zoe", L"anna", L"bert", L"carl"));
  EXPECT_EQ(Cell(3, 1), L"200");
  EXPECT_EQ(Cell(9, 0), L"");
  Notified();
  EXPECT_TRUE(Send(list_, LVM_DELETEITEM, 1));
  EXPECT_THAT(NotifiedAtOnce(), ElementsAre("notify 1 -103"));
  EXPECT_FALSE(Send(list_, LVM_DELETEITEM, 7));
  // Its text is asked for when it is shown, which the layer does not do.
  const LVITEMW asked = Item(LVIF_TEXT, 0, reinterpret_cast<LPWSTR>(LONG_PTR{-1}));
  EXPECT_EQ(ListView_InsertItem(list_, &asked), -1);
  EXPECT_THAT(Users(), ElementsAre(L"zoe", L"bert", L"carl"));
  EXPECT_TRUE(ListView_DeleteAllItems(list_));
  EXPECT_THAT(NotifiedAtOnce(),
              ElementsAre("notify 1 -104", "notify 1 -103", "notify 1 -103", "notify 1 -103"));
  EXPECT_THAT(Users(), IsEmpty());
}

TEST_F(ListViewTest, AnItemIsReadAsFarAsItIsAskedFor) {
  wchar_t text[4];
  LVITEMW item = Item(LVIF_TEXT | LVIF_PARAM, 2, text);
  item.cchTextMax = 4;
  ASSERT_TRUE(Send(list_, LVM_GETITEMW, 0, &item));
  EXPECT_STREQ(text, L"car");
  EXPECT_EQ(item.lParam, 200);
  item.iItem = 3;
  EXPECT_FALSE(Send(list_, LVM_GETITEMW, 0, &item));
  item = Item(LVIF_TEXT, 0, text);
  item.iSubItem = 2;
  EXPECT_FALSE(Send(list_, LVM_SETITEMW, 0, &item)) << "there is no third column";
}

TEST_F(ListViewTest, TheFirstColumnIsAlwaysAlignedToTheLeft) {
  for (const auto& [column, wanted] : {std::pair{0, Qt::AlignLeft}, {1, Qt::AlignRight}}) {
    const QVariant alignment =
        View()->model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole);
    EXPECT_NE(alignment.toInt() & wanted, 0) << column;
  }
}

TEST_F(ListViewTest, WidthsAreSetFittedAndChangedByTheUser) {
  EXPECT_EQ(Send(list_, LVM_GETCOLUMNWIDTH, 0), 120);
  EXPECT_EQ(View()->columnWidth(0), 120);
  EXPECT_TRUE(ListView_SetColumnWidth(list_, 0, 60));
  EXPECT_EQ(View()->columnWidth(0), 60);
  View()->header()->resizeSection(0, 70);
  EXPECT_EQ(Send(list_, LVM_GETCOLUMNWIDTH, 0), 70);
  wchar_t longText[] = L"a name that needs much more room";
  ListView_SetItemText(list_, 1, 0, longText);
  EXPECT_TRUE(ListView_SetColumnWidth(list_, 0, LVSCW_AUTOSIZE));
  EXPECT_GE(Send(list_, LVM_GETCOLUMNWIDTH, 0),
            View()->fontMetrics().horizontalAdvance(QString::fromWCharArray(longText)));
  ListView_SetColumnWidth(list_, 0, 100);
  EXPECT_TRUE(ListView_SetColumnWidth(list_, 1, LVSCW_AUTOSIZE_USEHEADER));
  EXPECT_EQ(Send(list_, LVM_GETCOLUMNWIDTH, 1), 300 - 2 * View()->frameWidth() - 100);
  EXPECT_FALSE(ListView_SetColumnWidth(list_, 2, 10));
}

TEST_F(ListViewTest, AClickSelectsAndTellsWhatChanged) {
  ClickRow(1);
  EXPECT_THAT(changes_, IsEmpty()) << "told inside the desktop's event";
  EXPECT_THAT(Notified(), ElementsAre("notify 1 -101", "notify 1 -2"));
  EXPECT_THAT(changes_, ElementsAre(Change(1, 0, kFocusedToo)));
  EXPECT_EQ(changes_[0].lParam, 9);
  changes_.clear();
  ClickRow(2);
  Notified();
  EXPECT_THAT(Selected(), ElementsAre(2));
  EXPECT_THAT(changes_, ElementsAre(Change(1, kFocusedToo, 0), Change(2, 0, kFocusedToo)));
}

TEST_F(ListViewTest, SeveralRowsAreSelectedUnlessOneIsTheMost) {
  ListView_SetItemState(list_, 0, LVIS_SELECTED, LVIS_SELECTED);
  ListView_SetItemState(list_, 2, LVIS_SELECTED, LVIS_SELECTED);
  EXPECT_THAT(Selected(), ElementsAre(2));
  EXPECT_THAT(changes_, ElementsAre(Change(0, 0, LVIS_SELECTED), Change(0, LVIS_SELECTED, 0),
                                    Change(2, 0, LVIS_SELECTED)));
  EXPECT_FALSE(SelectAll());
  EXPECT_THAT(Selected(), ElementsAre(2));
  List(0);
  EXPECT_TRUE(SelectAll());
  EXPECT_THAT(Selected(), ElementsAre(0, 1, 2));
  EXPECT_EQ(changes_.size(), 3u);
}

TEST_F(ListViewTest, ControlTogglesRowsAndShiftSelectsThoseFromTheLastOneClicked) {
  List(0);
  ClickRow(0);
  ClickRow(2, Qt::ControlModifier);
  EXPECT_THAT(Selected(), ElementsAre(0, 2));
  ClickRow(1, Qt::ShiftModifier);
  EXPECT_THAT(Selected(), ElementsAre(1, 2));
  ClickRow(2, Qt::ControlModifier);
  EXPECT_THAT(Selected(), ElementsAre(1));
  Notified();
  changes_.clear();
  Press(list_, Qt::Key_Home, Qt::ShiftModifier);
  EXPECT_THAT(Selected(), ElementsAre(0, 1, 2));
  Notified();
  EXPECT_THAT(changes_,
              ElementsAre(Change(2, LVIS_FOCUSED, LVIS_SELECTED), Change(0, 0, kFocusedToo)));
}

TEST_F(ListViewTest, TheSelectionGoesWithItsRow) {
  ListView_SetItemState(list_, 1, kFocusedToo, kFocusedToo);
  AddRow(L"zoe", L"1", 1, 0);
  EXPECT_THAT(Selected(), ElementsAre(2));
  Send(list_, LVM_DELETEITEM, 0);
  EXPECT_THAT(Selected(), ElementsAre(1));
  Send(list_, LVM_DELETEITEM, 1);
  EXPECT_THAT(Selected(), IsEmpty());
  List(0);
  SelectAll();
  AddRow(L"zoe", L"1", 1, 1);
  EXPECT_THAT(Selected(), ElementsAre(0, 2, 3));
  Send(list_, LVM_DELETEITEM, 1);
  EXPECT_THAT(Selected(), ElementsAre(0, 1, 2));
  Send(list_, LVM_DELETEITEM, 1);
  EXPECT_THAT(Selected(), ElementsAre(0, 1));
}

TEST_F(ListViewTest, TextsOfTheProgramsRowsAreAskedForOnlyWhereTheyArePaintedMeasuredOrRead) {
  constexpr int kRows = 100'000;
  constexpr std::size_t kFew = 40;
  OwnerList(kRows);
  PumpAll();
  ListView_SetColumnWidth(list_, 1, LVSCW_AUTOSIZE);
  EXPECT_TRUE(asked_.contains(kRowsInView - 1));
  EXPECT_LT(asked_.size(), kFew);
  EXPECT_EQ(Cell(kRows - 1, 0), L"row 99999");
  EXPECT_EQ(Cell(kRows - 1, 1), L"own 99999");
  EXPECT_EQ(Cell(kRows, 1), L"");
  asked_.clear();
  EXPECT_TRUE(Send(list_, LVM_ENSUREVISIBLE, kRows / 2));
  Send(list_, LVM_REDRAWITEMS, 0, LPARAM{kRows - 1});
  PumpAll();
  EXPECT_TRUE(asked_.contains(kRows / 2));
  Press(list_, Qt::Key_R);
  EXPECT_LT(asked_.size(), kFew) << "asked for by a search";
}

TEST_F(ListViewTest, TheProgramsRowsCannotBeInsertedChangedSortedOrChecked) {
  OwnerList(3);
  const LVITEMW item = Item(LVIF_TEXT, 0, ownText_.data());
  LVITEMW check{};
  check.state = check.stateMask = LVIS_STATEIMAGEMASK;
  const std::tuple<UINT, WPARAM, LPARAM, LRESULT> cases[] = {
      {LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item), -1},
      {LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item), FALSE},
      {LVM_SETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item), FALSE},
      {LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&check), FALSE},
      {LVM_DELETEITEM, 0, 0, FALSE},
      {LVM_SORTITEMS, 0, 1, FALSE},
      {LVM_SETITEMCOUNT, 5, 4, FALSE},
  };
  for (const auto& [message, wParam, lParam, failure] : cases)
    EXPECT_EQ(Send(list_, message, wParam, lParam), failure) << message;
  ListView_SetExtendedListViewStyleEx(list_, LVS_EX_CHECKBOXES, LVS_EX_CHECKBOXES);
  EXPECT_EQ(Send(list_, LVM_GETEXTENDEDLISTVIEWSTYLE), 0);
  EXPECT_EQ(ListView_GetItemCount(list_), 3);
  EXPECT_TRUE(ListView_DeleteAllItems(list_));
  EXPECT_EQ(ListView_GetItemCount(list_), 0);
}

TEST_F(ListViewTest, SelectingManyOfTheProgramsRowsIsOneNotification) {
  constexpr int kRows = 100'000;
  OwnerList(kRows);
  SelectAll();
  EXPECT_THAT(changes_, ElementsAre(Change(-1, 0, LVIS_SELECTED)));
  EXPECT_EQ(Send(list_, LVM_GETSELECTEDCOUNT), kRows);
  ClickRow(0);
  Notified();
  changes_.clear();
  ranges_.clear();
  ClickRow(3, Qt::ShiftModifier);
  Notified();
  EXPECT_THAT(changes_, ElementsAre(Change(0, LVIS_FOCUSED, 0), Change(3, 0, kFocusedToo)));
  ASSERT_EQ(ranges_.size(), 1u);
  EXPECT_EQ(ranges_[0].iFrom, 1);
  EXPECT_EQ(ranges_[0].iTo, 2);
  EXPECT_EQ(ranges_[0].uNewState, LVIS_SELECTED);
  Press(list_, Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(Send(list_, LVM_GETSELECTEDCOUNT), kRows);
  Send(list_, LVM_SETITEMCOUNT, 2);
  Send(list_, LVM_SETITEMCOUNT, 4);
  EXPECT_THAT(Selected(), ElementsAre(0, 1)) << "rows past the end stay selected";
  EXPECT_EQ(Send(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), -1);
}

TEST_F(ListViewTest, TheBoundsOfARowReachOverItsColumns) {
  RECT bounds{};
  ASSERT_TRUE(Send(list_, LVM_GETITEMRECT, 1, &bounds));
  EXPECT_EQ(bounds.right - bounds.left, 200);
  const QRect cell = View()->visualRect(View()->model()->index(1, 0));
  EXPECT_EQ(bounds.top, View()->viewport()->y() + cell.top());
  EXPECT_EQ(bounds.bottom - bounds.top, cell.height());
  bounds.left = LVIR_BOUNDS;
  EXPECT_FALSE(Send(list_, LVM_GETITEMRECT, 3, &bounds));
}

TEST_F(ListViewTest, SortingMovesWholeRows) {
  const auto byData = [](LPARAM first, LPARAM second, LPARAM direction) {
    return static_cast<int>(direction) * (first < second ? -1 : static_cast<int>(first > second));
  };
  ListView_SetItemState(list_, 0, LVIS_SELECTED, LVIS_SELECTED);
  EXPECT_TRUE(ListView_SortItems(list_, +byData, 1));
  EXPECT_THAT(Users(), ElementsAre(L"bert", L"anna", L"carl"));
  EXPECT_EQ(Cell(0, 1), L"9");
  EXPECT_THAT(Selected(), ElementsAre(1));
  EXPECT_TRUE(ListView_SortItems(list_, +byData, -1));
  EXPECT_THAT(Users(), ElementsAre(L"carl", L"anna", L"bert"));
}

TEST_F(ListViewTest, AClickOnAHeadingIsNotifiedUnlessTheyDoNotSort) {
  ClickSecondHeading();
  EXPECT_THAT(Notified(), ElementsAre("notify 1 -108"));
  EXPECT_EQ(clickedColumn_, 1);
  List(LVS_NOSORTHEADER);
  ClickSecondHeading();
  EXPECT_THAT(Notified(), IsEmpty());
}

TEST_F(ListViewTest, CheckBoxesComeToAllRowsAndAreClickedAndNotified) {
  constexpr int kCheckBox = 10;
  constexpr DWORD kStyle = LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT;
  ListView_SetExtendedListViewStyleEx(list_, kStyle, kStyle);
  EXPECT_EQ(Send(list_, LVM_GETEXTENDEDLISTVIEWSTYLE), LRESULT{kStyle});
  EXPECT_EQ(changes_.size(), 3u);
  AddRow(L"dora", L"1", 1);
  for (const int row : {0, 3})
    EXPECT_EQ(ListView_GetItemState(list_, row, LVIS_STATEIMAGEMASK), 0x1000u) << row;

  changes_.clear();
  EXPECT_EQ(ListView_GetCheckState(list_, 1), 0u);
  ListView_SetCheckState(list_, 1, TRUE);
  EXPECT_EQ(ListView_GetCheckState(list_, 1), 1u);
  EXPECT_THAT(changes_, ElementsAre(Change(1, 0x1000, 0x2000)));
  changes_.clear();
  ClickRow(1, {}, kCheckBox);
  Notified();
  EXPECT_EQ(ListView_GetCheckState(list_, 1), 0u);
  EXPECT_THAT(changes_, ::testing::Contains(Change(1, 0x2000, 0x1000)));
  ClickRow(2);
  Notified();
  changes_.clear();
  Press(list_, Qt::Key_Space);
  EXPECT_THAT(changes_, IsEmpty()) << "told inside the desktop's event";
  Notified();
  EXPECT_THAT(changes_, ElementsAre(Change(2, 0x1000, 0x2000)));
}

TEST_F(ListViewTest, ControlWithAOrCReachesTheProgramAndDoesNothingElse) {
  List(0);
  ClickRow(0);
  QGuiApplication::clipboard()->setText("before");
  std::vector<std::pair<int, bool>> keys;
  onNotify = [&](const NMHDR& header) {
    if (header.code != LVN_KEYDOWN) return;
    const int key = reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey;
    if (key != VK_CONTROL) keys.emplace_back(key, ::GetKeyState(VK_CONTROL) < 0);
  };
  Press(list_, Qt::Key_A, Qt::ControlModifier);
  Press(list_, Qt::Key_C, Qt::ControlModifier);
  Press(list_, Qt::Key_F5);
  EXPECT_THAT(keys, IsEmpty()) << "told inside the desktop's event";
  Notified();
  EXPECT_THAT(keys, ElementsAre(Pair('A', true), Pair('C', true), Pair(VK_F5, false)));
  EXPECT_THAT(Selected(), ElementsAre(0));
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
}

TEST_F(ListViewTest, ARightClickSelectsItsRowAndAsksTheParentForAMenuAsTheMenuKeyDoes) {
  List(0);
  std::vector<LPARAM> places;
  Hear(WM_CONTEXTMENU, [&](HWND window, WPARAM wParam, LPARAM lParam) {
    EXPECT_EQ(window, Parent());
    EXPECT_EQ(reinterpret_cast<HWND>(wParam), list_);
    places.push_back(lParam);
  });
  RightClickRow(1);
  EXPECT_THAT(places, IsEmpty()) << "told inside the desktop's event";
  Notified();
  const QPoint clicked = View()->viewport()->mapToGlobal(MiddleOf(1));
  EXPECT_THAT(places, ElementsAre(MAKELPARAM(clicked.x(), clicked.y())));
  EXPECT_THAT(Selected(), ElementsAre(1));
  ClickRow(2, Qt::ShiftModifier);
  RightClickRow(1);
  EXPECT_THAT(Selected(), ElementsAre(1, 2)) << "the menu is for all of them";
  Press(list_, Qt::Key_Menu);
  Press(list_, Qt::Key_F10, Qt::ShiftModifier);
  Notified();
  ASSERT_EQ(places.size(), 4u);
  EXPECT_EQ(places[2], -1);
  EXPECT_EQ(places[3], -1);
}

}  // namespace
