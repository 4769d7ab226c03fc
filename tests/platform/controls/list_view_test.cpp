// List views in report view: rows, columns, selection, check boxes and sorting.
#include <QHeaderView>
#include <QTreeView>
#include <map>

#include "platform/controls/control_test.h"

namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;

class ListViewTest : public ControlTest {
 protected:
  void SetUp() override {
    onNotify = [this](const NMHDR& header) -> LRESULT {
      if (header.code == LVN_ITEMCHANGED) {
        changes_.push_back(reinterpret_cast<const NMLISTVIEW&>(header));
      }
      if (header.code == LVN_COLUMNCLICK) {
        clickedColumn_ = reinterpret_cast<const NMLISTVIEW&>(header).iSubItem;
      }
      return 0;
    };
  }

  HWND List(DWORD style = LVS_SINGLESEL) {
    list_ = Make(WC_LISTVIEW, LVS_REPORT | LVS_SHOWSELALWAYS | style, L"", 300, 150);
    if (list_ == nullptr) return nullptr;
    AddColumn(L"User", 120, LVCFMT_RIGHT);
    AddColumn(L"Bytes", 80, LVCFMT_RIGHT);
    return list_;
  }
  LRESULT AddColumn(const wchar_t* title, int width, int format) {
    std::wstring copy = title;
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.pszText = copy.data();
    column.cx = width;
    column.fmt = format;
    return ListView_InsertColumn(list_, 99, &column);
  }
  int AddRow(const wchar_t* user, const wchar_t* bytes, LPARAM data = 0, int place = 99) {
    std::wstring first = user;
    std::wstring second = bytes;
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = place;
    item.pszText = first.data();
    item.lParam = data;
    const int row = ListView_InsertItem(list_, &item);
    ListView_SetItemText(list_, row, 1, second.data());
    return row;
  }
  void Fill() {
    AddRow(L"anna", L"10", 10);
    AddRow(L"bert", L"9", 9);
    AddRow(L"carl", L"200", 200);
    Told();
    changes_.clear();
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
  // As the control knows it and as the user sees it.
  std::vector<int> Selected() const {
    std::vector<int> rows;
    for (int row = -1; (row = ListView_GetNextItem(list_, row, LVNI_SELECTED)) >= 0;)
      rows.push_back(row);
    EXPECT_EQ(View()->selectionModel()->selectedRows().size(), rows.size());
    for (const int row : rows)
      EXPECT_TRUE(View()->selectionModel()->isRowSelected(row));
    return rows;
  }
  void ClickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QRect place = View()->visualRect(View()->model()->index(row, 0));
    QTest::mouseClick(View()->viewport(), Qt::LeftButton, modifiers, place.center());
  }
  void ClickCheckBox(int row) {
    const QRect place = View()->visualRect(View()->model()->index(row, 0));
    QTest::mouseClick(View()->viewport(), Qt::LeftButton, {},
                      QPoint(place.left() + 10, place.center().y()));
  }

  HWND list_ = nullptr;
  std::vector<NMLISTVIEW> changes_;
  int clickedColumn_ = -1;
};

auto Change(int row, UINT before, UINT after) {
  return AllOf(Field(&NMLISTVIEW::iItem, row), Field(&NMLISTVIEW::uOldState, before),
               Field(&NMLISTVIEW::uNewState, after), Field(&NMLISTVIEW::uChanged, LVIF_STATE));
}

TEST_F(ListViewTest, RowsAreKeptInPlaceWithTheirCells) {
  List();
  Fill();
  AddRow(L"zoe", L"1", 1, 0);
  EXPECT_THAT(Users(), ElementsAre(L"zoe", L"anna", L"bert", L"carl"));
  EXPECT_EQ(Cell(3, 1), L"200");
  EXPECT_EQ(Cell(9, 0), L"");
  EXPECT_TRUE(ListView_DeleteItem(list_, 1));
  EXPECT_FALSE(ListView_DeleteItem(list_, 7));
  EXPECT_THAT(Users(), ElementsAre(L"zoe", L"bert", L"carl"));
  EXPECT_TRUE(ListView_DeleteAllItems(list_));
  EXPECT_THAT(Users(), IsEmpty());
}

TEST_F(ListViewTest, AnItemIsReadAsFarAsItIsAskedFor) {
  List();
  Fill();
  wchar_t text[4];
  LVITEMW item{};
  item.mask = LVIF_TEXT | LVIF_PARAM;
  item.iItem = 2;
  item.pszText = text;
  item.cchTextMax = 4;
  ASSERT_TRUE(ListView_GetItem(list_, &item));
  EXPECT_STREQ(text, L"car");
  EXPECT_EQ(item.lParam, 200);
  item.iItem = 3;
  EXPECT_FALSE(ListView_GetItem(list_, &item));
  wchar_t changed[] = L"x";
  item = {};
  item.mask = LVIF_TEXT;
  item.iItem = 0;
  item.iSubItem = 2;
  item.pszText = changed;
  EXPECT_FALSE(ListView_SetItem(list_, &item)) << "there is no third column";
}

TEST_F(ListViewTest, TheFirstColumnIsAlwaysAlignedToTheLeft) {
  List();
  const auto* model = View()->model();
  const auto alignment = [&](int column) {
    return model->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
  };
  EXPECT_TRUE((alignment(0) & Qt::AlignLeft) != 0);
  EXPECT_TRUE((alignment(1) & Qt::AlignRight) != 0);
}

TEST_F(ListViewTest, WidthsAreSetFittedAndChangedByTheUser) {
  List();
  Fill();
  EXPECT_EQ(ListView_GetColumnWidth(list_, 0), 120);
  EXPECT_EQ(View()->columnWidth(0), 120);
  EXPECT_TRUE(ListView_SetColumnWidth(list_, 0, 60));
  EXPECT_EQ(View()->columnWidth(0), 60);
  View()->header()->resizeSection(0, 70);
  EXPECT_EQ(ListView_GetColumnWidth(list_, 0), 70);
  wchar_t longText[] = L"a name that needs much more room";
  ListView_SetItemText(list_, 1, 0, longText);
  EXPECT_TRUE(ListView_SetColumnWidth(list_, 0, LVSCW_AUTOSIZE));
  EXPECT_GE(ListView_GetColumnWidth(list_, 0),
            View()->fontMetrics().horizontalAdvance(QString::fromWCharArray(longText)));
  ListView_SetColumnWidth(list_, 0, 100);
  EXPECT_TRUE(ListView_SetColumnWidth(list_, 1, LVSCW_AUTOSIZE_USEHEADER));
  EXPECT_EQ(ListView_GetColumnWidth(list_, 1), 300 - 2 * View()->frameWidth() - 100);
  EXPECT_FALSE(ListView_SetColumnWidth(list_, 2, 10));
}

TEST_F(ListViewTest, AClickSelectsAndTellsWhatChanged) {
  List();
  Fill();
  ClickRow(1);
  EXPECT_THAT(changes_, IsEmpty()) << "told inside the desktop's event";
  EXPECT_THAT(Told(), ElementsAre("notify 1 -101", "notify 1 -2"));
  constexpr UINT kBoth = LVIS_SELECTED | LVIS_FOCUSED;
  EXPECT_THAT(changes_, ElementsAre(Change(1, 0, kBoth)));
  EXPECT_EQ(changes_[0].lParam, 9);
  changes_.clear();
  ClickRow(2);
  Told();
  EXPECT_THAT(Selected(), ElementsAre(2));
  EXPECT_THAT(changes_, ElementsAre(Change(1, kBoth, 0), Change(2, 0, kBoth)));
}

TEST_F(ListViewTest, SeveralRowsAreSelectedUnlessOneIsTheMost) {
  List(0);
  Fill();
  ClickRow(0);
  ClickRow(2, Qt::ControlModifier);
  EXPECT_THAT(Selected(), ElementsAre(0, 2));
  ListView_SetItemState(list_, -1, LVIS_SELECTED, LVIS_SELECTED);
  EXPECT_THAT(Selected(), ElementsAre(0, 1, 2));

  ::DestroyWindow(list_);
  List(LVS_SINGLESEL);
  Fill();
  ListView_SetItemState(list_, 0, LVIS_SELECTED, LVIS_SELECTED);
  ListView_SetItemState(list_, 2, LVIS_SELECTED, LVIS_SELECTED);
  EXPECT_THAT(Selected(), ElementsAre(2));
  EXPECT_THAT(changes_, ElementsAre(Change(0, 0, LVIS_SELECTED), Change(0, LVIS_SELECTED, 0),
                                    Change(2, 0, LVIS_SELECTED)));
}

TEST_F(ListViewTest, TheSelectionGoesWithItsRow) {
  List();
  Fill();
  ListView_SetItemState(list_, 1, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  AddRow(L"zoe", L"1", 1, 0);
  EXPECT_THAT(Selected(), ElementsAre(2));
  ListView_DeleteItem(list_, 0);
  EXPECT_THAT(Selected(), ElementsAre(1));
  ListView_DeleteItem(list_, 1);
  EXPECT_THAT(Selected(), IsEmpty());
}

int CALLBACK ByData(LPARAM first, LPARAM second, LPARAM direction) {
  const auto order = first < second ? -1 : static_cast<int>(first > second);
  return static_cast<int>(direction) * order;
}

TEST_F(ListViewTest, SortingMovesWholeRows) {
  List();
  Fill();
  ListView_SetItemState(list_, 0, LVIS_SELECTED, LVIS_SELECTED);
  EXPECT_TRUE(ListView_SortItems(list_, ByData, 1));
  EXPECT_THAT(Users(), ElementsAre(L"bert", L"anna", L"carl"));
  EXPECT_EQ(Cell(0, 1), L"9");
  EXPECT_THAT(Selected(), ElementsAre(1));
  EXPECT_TRUE(ListView_SortItems(list_, ByData, -1));
  EXPECT_THAT(Users(), ElementsAre(L"carl", L"anna", L"bert"));
}

TEST_F(ListViewTest, AClickOnAHeadingIsToldUnlessTheyDoNotSort) {
  List();
  auto click = [&] {
    QHeaderView* header = View()->header();
    const QPoint place(header->sectionViewportPosition(1) + 20, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
  };
  click();
  EXPECT_THAT(Told(), ElementsAre("notify 1 -108"));
  EXPECT_EQ(clickedColumn_, 1);
  List(LVS_NOSORTHEADER);
  click();
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(ListViewTest, CheckBoxesAreClickedAndTold) {
  List();
  ListView_SetExtendedListViewStyle(list_, LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
  Fill();
  EXPECT_EQ(ListView_GetCheckState(list_, 1), 0u);
  ListView_SetCheckState(list_, 1, TRUE);
  EXPECT_EQ(ListView_GetCheckState(list_, 1), 1u);
  EXPECT_THAT(changes_, ElementsAre(Change(1, 0x1000, 0x2000)));
  changes_.clear();
  ClickCheckBox(1);
  Told();
  EXPECT_EQ(ListView_GetCheckState(list_, 1), 0u);
  EXPECT_THAT(changes_, ::testing::Contains(Change(1, 0x2000, 0x1000)));
}

TEST_F(ListViewTest, CheckBoxesComeToRowsThatAreThere) {
  List();
  Fill();
  ListView_SetExtendedListViewStyle(list_, LVS_EX_CHECKBOXES);
  EXPECT_EQ(changes_.size(), 3u);
  EXPECT_EQ(ListView_GetItemState(list_, 0, LVIS_STATEIMAGEMASK), 0x1000u);
  EXPECT_EQ(Send(list_, LVM_GETEXTENDEDLISTVIEWSTYLE), LRESULT{LVS_EX_CHECKBOXES});
}

TEST_F(ListViewTest, DeletingIsTold) {
  List();
  Fill();
  ListView_DeleteItem(list_, 0);
  EXPECT_THAT(ToldAtOnce(), ElementsAre("notify 1 -103"));
  ListView_DeleteAllItems(list_);
  EXPECT_THAT(ToldAtOnce(), ElementsAre("notify 1 -104", "notify 1 -103", "notify 1 -103"));
}

TEST_F(ListViewTest, OtherViewsAreNotMade) {
  EXPECT_EQ(Make(WC_LISTVIEW, 0), nullptr);
  constexpr DWORD kOwnerData = 0x1000;
  EXPECT_EQ(List(kOwnerData), nullptr);
}

}  // namespace
