// The program's dialogs as the layer reads them, beside the numbers that the code knows them by.
#include <windows.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "platform/dialog/dialog_resource.h"
#include "resources/resource.h"

namespace {

using platform::DialogItem;
using platform::DialogTemplate;

// The numbers of controls, under the number of the dialog that they stand below.
std::map<DWORD, std::multiset<DWORD>> NumbersInHeader() {
  static const std::regex kDefinition(R"(#define (ID[DC])_\w+ (\d+))");
  std::map<DWORD, std::multiset<DWORD>> dialogs;
  DWORD dialog = 0;
  std::ifstream header(QG_RESOURCE_HEADER);
  for (std::string line; std::getline(header, line);) {
    std::smatch match;
    if (!std::regex_match(line, match, kDefinition)) continue;
    const auto number = static_cast<DWORD>(std::stoul(match[2]));
    if (match[1] == "IDD") {
      dialogs[dialog = number];
    } else {
      dialogs[dialog].insert(number);
    }
  }
  return dialogs;
}

DialogTemplate Dialog(DWORD number) {
  return platform::FindDialogTemplate(nullptr, MAKEINTRESOURCEW(number)).value();
}

bool IsGroup(const DialogItem& item) {
  return item.className == L"Button" && (item.style & BS_TYPEMASK) == BS_GROUPBOX;
}

// A drop-down list is given with its list opened.
RECT Shown(const DialogItem& item) {
  RECT place = item.place;
  constexpr LONG kClosedListHeight = 14;
  if (item.className == L"ComboBox") place.bottom = place.top + kClosedListHeight;
  return place;
}

bool Overlap(const RECT& a, const RECT& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

bool Contains(const RECT& outer, const RECT& inner) {
  return outer.left <= inner.left && outer.top <= inner.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

std::string Name(DWORD dialog, const DialogItem& item) {
  return "control " + std::to_string(item.id) + " of " + std::to_string(dialog);
}

TEST(Dialogs, EveryNumberOfAControlIsInItsDialogOnce) {
  const auto dialogs = NumbersInHeader();
  ASSERT_GE(dialogs.size(), 5u);
  for (const auto& [dialog, controls] : dialogs) {
    std::multiset<DWORD> ids;
    for (const DialogItem& item : Dialog(dialog).items)
      ids.insert(item.id);
    for (const DWORD unnamed : {DWORD{IDOK}, DWORD{IDCANCEL}, DWORD{0xFFFFFFFF}})
      ids.erase(unnamed);
    EXPECT_EQ(ids, controls) << dialog;
  }
}

// The logon dialog moves this row up or down when it opens.
bool IsOfPasswordRow(DWORD control) {
  return control == IDC_LOGON_PASSWORD || control == IDC_LOGON_PASSWORD_LABEL;
}

TEST(Dialogs, ControlsLieInsideTheirDialogWithoutOverlapping) {
  for (const auto& [number, controls] : NumbersInHeader()) {
    const DialogTemplate dialog = Dialog(number);
    const RECT client{0, 0, dialog.place.right - dialog.place.left,
                      dialog.place.bottom - dialog.place.top};
    for (const DialogItem& item : dialog.items) {
      EXPECT_TRUE(Contains(client, Shown(item))) << Name(number, item);
      for (const DialogItem& other : dialog.items) {
        if (&other == &item || !Overlap(Shown(item), Shown(other))) continue;
        if (number == IDD_LOGON && IsOfPasswordRow(item.id) != IsOfPasswordRow(other.id)) continue;
        EXPECT_TRUE((IsGroup(item) && Contains(Shown(item), Shown(other))) ||
                    (IsGroup(other) && Contains(Shown(other), Shown(item))))
            << Name(number, item) << " and " << Name(number, other);
      }
    }
  }
}

TEST(Dialogs, HelpNumbersTellTemplateAndControlOnThePagesOnly) {
  for (const auto& [number, controls] : NumbersInHeader()) {
    constexpr DWORD kHelped[] = {IDD_SETTINGS_USERS,     IDD_SETTINGS_GENERAL,
                                 IDD_SETTINGS_ADVANCED,  IDD_CONNECTION_GENERAL,
                                 IDD_CONNECTION_DETAILS, IDD_STATISTICS_DETAILS,
                                 IDD_SETUP_RESTRICTIONS, IDD_SETUP_USERS};
    const bool helps = std::ranges::count(kHelped, number) != 0;
    for (const DialogItem& item : Dialog(number).items) {
      const DWORD expected = helps ? 0x80000000 + number * 65536 + item.id : 0;
      EXPECT_EQ(item.helpId, expected) << Name(number, item);
    }
  }
}

TEST(Dialogs, ValuesStandAtTheRightThePasswordIsHiddenAndUsersKeepTheirOrder) {
  std::vector<DWORD> values;
  for (const DialogItem& item : Dialog(IDD_CONNECTION_GENERAL).items) {
    if (item.text == L"-") values.push_back(item.style & (SS_TYPEMASK | SS_NOPREFIX));
  }
  EXPECT_EQ(values, std::vector<DWORD>(16, SS_RIGHT | SS_NOPREFIX));
  for (const DialogItem& item : Dialog(IDD_LOGON).items) {
    const DWORD order = item.style & (CBS_DROPDOWNLIST | CBS_SORT);
    EXPECT_TRUE(item.id != IDC_LOGON_PASSWORD || (item.style & ES_PASSWORD) != 0);
    EXPECT_TRUE(item.id != IDC_LOGON_USER || order == CBS_DROPDOWNLIST);
  }
}

}  // namespace
