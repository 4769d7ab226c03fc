// The tray's menu in every state: its items with their commands and icons, and the bold one.
#include "ui/tray_menu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/testing/simulated_machine.h"
#include "text/message_catalogue.h"

namespace quillgate {
namespace {

using testing::ElementsAreArray;

using Lines = std::vector<std::wstring>;

// "Text command/icon", "*" in front of the default item, "-" for a separator, "> " within a
// submenu.
void Describe(const std::vector<TrayMenuItem>& items, TrayCommand bold, const std::wstring& indent,
              Lines& lines) {
  const MessageCatalogue catalogue;
  for (const TrayMenuItem& item : items) {
    if (item.text == 0) {
      lines.push_back(indent + L"-");
      continue;
    }
    lines.push_back(
        indent + (item.command == bold ? L"*" : L"") + catalogue.GetMessageText(item.text) + L" " +
        std::to_wstring(static_cast<int>(item.command)) + L"/" + std::to_wstring(item.icon));
    Describe(item.submenu, bold, indent + L"> ", lines);
  }
}

Lines MenuOf(const TrayMenuState& state) {
  const TrayMenu menu = BuildTrayMenu(state);
  Lines lines;
  Describe(menu.items, menu.defaultCommand, {}, lines);
  return lines;
}

struct Case {
  const char* name;
  TrayMenuState state;
  Lines items;  // above the separator before Help
  bool hasExit = false;
};

const std::wstring kLogOn = L"Log on... 7/122";
const std::wstring kLogOff = L"Log off 6/0";
const std::wstring kStatistics = L"Statistics... 5/120";
const std::wstring kConnection = L"Connection... 13/131";
const std::wstring kSettings = L"Settings... 4/118";
const std::wstring kOverride = L"Security override... 14/143";
const std::wstring kRemove = L"Remove override 15/0";

TrayMenuState Nobody(LogonSystem system, bool adminsOnly = false) {
  return {system, false, L"", false, adminsOnly};
}
TrayMenuState Regular(LogonSystem system, bool adminsOnly = false) {
  return {system, true, L"User", false, adminsOnly};
}
TrayMenuState Administrator(LogonSystem system, bool adminsOnly = false) {
  return {system, true, L"Admin", true, adminsOnly};
}

std::vector<Case> Cases() {
  const LogonSystem none = LogonSystem::kNone;
  const LogonSystem own = LogonSystem::kQuillgate;
  const LogonSystem windows = LogonSystem::kWindows;
  return {
      {"own, nobody", Nobody(own), {L"*" + kLogOn, L"-", kStatistics}},
      {"own, nobody, admins only", Nobody(own, true), {L"*" + kLogOn}},
      {"own, user", Regular(own), {kLogOff, L"-", L"*" + kStatistics, kConnection, kSettings}},
      {"own, user, admins only",
       Regular(own, true),
       {kLogOff, L"-", L"*" + kConnection, kSettings}},
      {"own, admin, admins only",
       Administrator(own, true),
       {kLogOff, L"-", L"*" + kStatistics, kConnection, kSettings},
       true},
      {"none, user", Regular(none), {L"*" + kConnection, kOverride}},
      {"none, override", Administrator(none), {L"*" + kConnection, kSettings, kRemove}, true},
      {"none, nobody", Nobody(none), {kOverride}},
      {"windows, admin",
       Administrator(windows),
       {L"*" + kStatistics, kConnection, kSettings},
       true},
      {"windows, user", Regular(windows), {L"*" + kStatistics, kConnection, kSettings}},
      // Statistics stays the default although it is not there: nothing is bold.
      {"windows, user, admins only", Regular(windows, true), {kConnection, kSettings}},
      {"windows, nobody", Nobody(windows), {L"*" + kStatistics}},
      {"windows, nobody, admins only", Nobody(windows, true), {}},
  };
}

TEST(TrayMenu, HasTheItemsOfItsState) {
  const platform::SimulatedMachine machine;
  for (const Case& each : Cases()) {
    Lines expected = each.items;
    for (const wchar_t* line :
         {L"-", L"Help 2/121", L"> Help topics 12/0", L"> -", L"> About Quillgate... 11/0"})
      expected.emplace_back(line);
    if (each.hasExit) {
      expected.emplace_back(L"-");
      expected.emplace_back(L"Exit 1/119");
    }
    EXPECT_THAT(MenuOf(each.state), ElementsAreArray(expected)) << each.name;
  }
}

TEST(TrayMenu, AnAdministratorOfAnotherNameHasNoOverride) {
  const platform::SimulatedMachine machine;
  TrayMenuState state = Administrator(LogonSystem::kNone);
  state.userName = L"admin";
  EXPECT_THAT(MenuOf(state), testing::Contains(kOverride));
  EXPECT_THAT(MenuOf(state), testing::Not(testing::Contains(kSettings)));
}

}  // namespace
}  // namespace quillgate
