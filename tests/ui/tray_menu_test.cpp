// The tray's menu in every state: its items with their commands and icons, and the bold one.
#include "ui/tray_menu.h"

#include <gtest/gtest.h>

#include <map>

#include "platform/testing/simulated_machine.h"
#include "text/message_catalogue.h"

namespace quillgate {
namespace {

// Text and icon by the command's number.
const std::map<int, std::pair<std::wstring, WORD>> kItems = {
    {1, {L"Exit", 119}},
    {2, {L"Help", 121}},
    {4, {L"Settings...", 118}},
    {5, {L"Statistics...", 120}},
    {6, {L"Log off", 0}},
    {7, {L"Log on...", 122}},
    {11, {L"About Quillgate...", 0}},
    {12, {L"Help topics", 0}},
    {13, {L"Connection...", 131}},
    {14, {L"Security override...", 143}},
    {15, {L"Remove override", 0}},
};

// The numbers of the commands, "*" in front of the bold one, "-" for a separator, a submenu in
// parentheses.
std::wstring Describe(const std::vector<TrayMenuItem>& items, TrayCommand bold) {
  std::wstring text;
  for (const TrayMenuItem& item : items) {
    if (!text.empty()) text += L' ';
    if (item.text == 0) {
      text += L'-';
      continue;
    }
    const int command = static_cast<int>(item.command);
    EXPECT_EQ(std::pair(MessageCatalogue().GetMessageText(item.text), item.icon),
              kItems.at(command));
    text += (item.command == bold ? L"*" : L"") + std::to_wstring(command);
    if (!item.submenu.empty()) text += L" (" + Describe(item.submenu, bold) + L")";
  }
  return text;
}

TEST(TrayMenu, HasTheItemsOfItsStateWithTheirTextsAndIcons) {
  const platform::SimulatedMachine machine;
  constexpr LogonSystem kOwn = LogonSystem::kQuillgate;
  constexpr LogonSystem kWindows = LogonSystem::kWindows;
  constexpr LogonSystem kNone = LogonSystem::kNone;
  const struct {
    LogonSystem system;
    const wchar_t* user;  // empty: nobody
    bool statisticsForAdmins;
    const wchar_t* items;
  } cases[] = {
      {kOwn, L"", false, L"*7 - 5 - 2 (12 - 11)"},
      {kOwn, L"", true, L"*7 - 2 (12 - 11)"},
      {kOwn, L"User", false, L"6 - *5 13 4 - 2 (12 - 11)"},
      {kOwn, L"User", true, L"6 - *13 4 - 2 (12 - 11)"},
      {kOwn, L"Admin", true, L"6 - *5 13 4 - 2 (12 - 11) - 1"},
      {kNone, L"", false, L"14 - 2 (12 - 11)"},
      {kNone, L"User", false, L"*13 14 - 2 (12 - 11)"},
      {kNone, L"Admin", false, L"*13 4 15 - 2 (12 - 11) - 1"},
      {kWindows, L"Admin", false, L"*5 13 4 - 2 (12 - 11) - 1"},
      {kWindows, L"User", false, L"*5 13 4 - 2 (12 - 11)"},
      // Statistics stays the default although it is not there: nothing is bold.
      {kWindows, L"User", true, L"13 4 - 2 (12 - 11)"},
      {kWindows, L"", false, L"*5 - 2 (12 - 11)"},
      {kWindows, L"", true, L"- 2 (12 - 11)"},
      // An administrator of another name has no override.
      {kNone, L"Bo", false, L"*13 14 - 2 (12 - 11) - 1"},
  };
  for (const auto& each : cases) {
    const std::wstring user = each.user;
    const bool isAdministrator = user == L"Admin" || user == L"Bo";
    const TrayMenu menu = BuildTrayMenu(
        {each.system, !user.empty(), user, isAdministrator, each.statisticsForAdmins});
    EXPECT_EQ(Describe(menu.items, menu.defaultCommand), each.items)
        << static_cast<int>(each.system) << user << each.statisticsForAdmins;
  }
}

}  // namespace
}  // namespace quillgate
