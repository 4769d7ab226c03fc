// The typed controls on the system's own, without a screen, and the numbers of number fields.
#include <gmock/gmock.h>

#include <limits>

#include "frame/callback_window.h"
#include "frame/clipboard.h"
#include "frame/combo_box.h"
#include "frame/date_picker.h"
#include "frame/list_view.h"
#include "frame/number_field.h"
#include "frame/radio_group.h"
#include "frame/up_down.h"
#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

struct Parent final : CallbackWindow {
  LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message != WM_NOTIFY) return ::DefWindowProcW(window, message, wParam, lParam);
    const auto& header = *reinterpret_cast<NMHDR*>(lParam);
    if (ListView::IsCheckChange(header)) ++checkChanges;
    if (header.code == LVN_GETDISPINFOW) ListView::AnswerTextRequest(header, textOf);
    return ::DefWindowProcW(window, message, wParam, lParam);
  }

  int checkChanges = 0;
  ListView::TextOfCell textOf;
};

class ControlsTest : public testing::Test {
 protected:
  ControlsTest() {
    const INITCOMMONCONTROLSEX classes{sizeof(classes),
                                       ICC_LISTVIEW_CLASSES | ICC_UPDOWN_CLASS | ICC_DATE_CLASSES};
    EXPECT_TRUE(::InitCommonControlsEx(&classes));
    EXPECT_TRUE(parent_.Create());
  }

  HWND Make(const wchar_t* name, int id, DWORD style = 0) {
    ::CreateWindowExW(0, name, L"", WS_CHILD | style, 0, 0, 100, 100, parent_.Window(),
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    return parent_.Window();
  }

  platform::SimulatedMachine machine_;
  Parent parent_;
};

TEST(NumberRangeTest, ATextIsTheNumberOfItsDigitsAndNeverWraps) {
  constexpr std::uint32_t kLargest = std::numeric_limits<std::uint32_t>::max();
  const std::pair<const wchar_t*, std::uint32_t> cases[] = {{L"", 0},
                                                            {L"  ", 0},
                                                            {L" 12", 12},
                                                            {L"12a3", 12},
                                                            {L"-1", 0},
                                                            {L"4294967295", kLargest},
                                                            {L"4294967296", kLargest},
                                                            {L"99999999999999999999999", kLargest}};
  for (const auto& [text, number] : cases)
    EXPECT_EQ(ParseNumber(text), number) << text;
}

TEST_F(ControlsTest, WhatIsSetIsWhatIsRead) {
  constexpr int kButtons[] = {3, 1, 2};
  for (const int each : kButtons)
    Make(L"BUTTON", each, BS_AUTORADIOBUTTON);
  const RadioGroup group(parent_.Window(), kButtons);
  EXPECT_EQ(group.Selection(), 0);
  group.Select(1);
  group.Select(2);
  EXPECT_EQ(group.Selection(), 2);

  const ComboBox combo(Make(L"COMBOBOX", 4, CBS_DROPDOWNLIST), 4);
  combo.Add(L"one", 29);
  combo.Add(L"two", 9);
  EXPECT_EQ(combo.SelectedData(), std::nullopt);
  combo.Select(1);
  EXPECT_EQ(combo.SelectedData(), 9);
  combo.Remove(0);
  EXPECT_EQ(combo.SelectedText(), L"two");

  const NumberField number(Make(L"EDIT", 5), 5);
  number.SetNumber(1440);
  EXPECT_EQ(number.Number(), 1440u);

  const UpDown arrows(Make(L"msctls_updown32", 6), 6);
  arrows.SetRange(-100, 100);
  arrows.SetPosition(-3);
  EXPECT_EQ(arrows.Position(), -3);
}

TEST_F(ControlsTest, WithoutADesktopNothingIsCopied) {
  EXPECT_FALSE(CopyToClipboard(parent_.Window(), L"text"));
}

TEST_F(ControlsTest, ADateIsKeptWithinItsBounds) {
  const DatePicker picker(Make(L"SysDateTimePick32", 1), 1);
  const auto day = [](WORD number) { return SYSTEMTIME{2004, 3, 0, number, 0, 0, 0, 0}; };
  picker.SetDate(day(9));
  picker.SetBounds({}, day(5));
  EXPECT_EQ(picker.Date()->wDay, 5);
  picker.SetBounds(day(7), {});
  EXPECT_EQ(picker.Date()->wDay, 7);
  picker.SetDate(day(31));
  EXPECT_EQ(picker.Date()->wDay, 31);
}

TEST_F(ControlsTest, AListAsksTheProgramForItsRows) {
  const ListView list(Make(L"SysListView32", 1, LVS_REPORT | LVS_OWNERDATA), 1);
  list.AddColumn(L"Name", 50);
  list.AddColumn(L"Bytes", 50, LVCFMT_RIGHT);
  list.SetRowCount(100);
  parent_.textOf = [](int row, int column) {
    return std::to_wstring(row) + std::wstring(static_cast<std::size_t>(column) * 300, L'0');
  };
  EXPECT_EQ(list.Cell(7, 0), L"7");
  EXPECT_EQ(list.Cell(7, 1).size(), 255u) << "more than there is space for";
  list.Select(5, true);
  list.Select(8, true);
  EXPECT_EQ(list.NextSelected(-1), 5);
  EXPECT_EQ(list.NextSelected(5), 8);
  EXPECT_EQ(list.NextSelected(8), -1);
  list.SelectAll(true);
  list.Select(0, false);
  EXPECT_EQ(list.NextSelected(-1), 1);
  EXPECT_EQ(list.FocusedRow(), -1);
  const POINT byMouse = list.MenuPosition(MAKELPARAM(-1, 40));
  EXPECT_EQ(byMouse.x, -1);
  EXPECT_EQ(byMouse.y, 40);
}

TEST_F(ControlsTest, ChecksAndCellsStayWithTheirRowWhenSorted) {
  const ListView list(Make(L"SysListView32", 1, LVS_REPORT), 1);
  list.AddCheckBoxes();
  list.SelectWholeRows();
  list.AddColumn(L"Name", 50);
  list.AddColumn(L"Bytes", 50);
  for (const LPARAM each : {10, 9, 100}) {
    const int row = list.AddRow(L"row " + std::to_wstring(each), each);
    list.SetCell(row, 1, std::to_wstring(each));
  }
  EXPECT_EQ(parent_.checkChanges, 0);
  list.Check(1, true);
  EXPECT_EQ(parent_.checkChanges, 1);
  list.Sort([](LPARAM first, LPARAM second) { return static_cast<int>(second - first); });
  EXPECT_EQ(list.Cell(0, 1), L"100");
  EXPECT_EQ(list.Cell(2, 0), L"row 9");
  EXPECT_TRUE(list.IsChecked(2));
  EXPECT_FALSE(list.IsChecked(0));
  EXPECT_FALSE(list.IsSelected(2));
}

}  // namespace
}  // namespace quillgate
