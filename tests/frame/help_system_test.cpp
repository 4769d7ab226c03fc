// What the help viewer is asked for, and that a machine without one takes no harm.
#include "frame/help_system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <htmlhelp.h>

#include "frame/help_topics.h"
#include "platform/kernel/modules.h"
#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

struct Request {
  HWND caller;
  std::wstring location;
  UINT command;
  HH_POPUP popup;
  DWORD_PTR data;
};

constexpr DWORD_PTR kCookie = 77;
std::vector<Request> requests;

HWND WINAPI RecordRequest(HWND caller, LPCWSTR file, UINT command, DWORD_PTR data) {
  Request request{caller, file == nullptr ? L"" : file, command, {}, data};
  if (command == HH_INITIALIZE) *reinterpret_cast<DWORD_PTR*>(data) = kCookie;
  if (command == HH_DISPLAY_TEXT_POPUP) request.popup = *reinterpret_cast<const HH_POPUP*>(data);
  requests.push_back(request);
  return nullptr;
}

class HelpSystemTest : public testing::Test {
 protected:
  HelpSystemTest() { requests.clear(); }
  ~HelpSystemTest() override { platform::UnregisterBuiltInModule(L"hhctrl.ocx"); }

  static void Install(const wchar_t* name) {
    platform::RegisterBuiltInModule(name, {{"#15", reinterpret_cast<FARPROC>(RecordRequest)}});
  }
  static std::vector<UINT> Commands() {
    std::vector<UINT> commands;
    for (const Request& each : std::exchange(requests, {}))
      commands.push_back(each.command);
    return commands;
  }

  platform::SimulatedMachine machine_;
};

TEST_F(HelpSystemTest, ATopicStandsBehindTheFileAndAPopupHasItsNumberAndTheViewersOwnLook) {
  Install(L"hhctrl.ocx");
  {
    HelpSystem help;
    help.SetHelpFile(L"quillgate.chm");
    help.ShowTopic(kTopicIndex);
    help.ShowTopic(L"a.html", L"main");
    help.ShowPopup(HelpPopupNumber(128, 1077));
  }
  const std::vector<Request> all = requests;
  ASSERT_THAT(Commands(), ElementsAre(HH_INITIALIZE, HH_DISPLAY_TOPIC, HH_DISPLAY_TOPIC,
                                      HH_DISPLAY_TEXT_POPUP, HH_UNINITIALIZE));
  EXPECT_EQ(all[1].location, L"quillgate.chm::/html/index.html");
  EXPECT_EQ(all[1].caller, ::GetDesktopWindow());
  EXPECT_EQ(all[2].location, L"quillgate.chm::/a.html>main");
  EXPECT_EQ(all[3].location, L"quillgate.chm::/popups.txt");
  const HH_POPUP& popup = all[3].popup;
  EXPECT_EQ(popup.cbStruct, static_cast<int>(sizeof(HH_POPUP)));
  EXPECT_EQ(popup.idString, 0x80800435u);
  EXPECT_EQ(popup.pszText, nullptr);
  EXPECT_EQ(popup.clrForeground, static_cast<COLORREF>(-1));
  EXPECT_EQ(popup.clrBackground, static_cast<COLORREF>(-1));
  EXPECT_EQ(popup.rcMargins.left, -1);
  EXPECT_EQ(popup.rcMargins.bottom, -1);
  EXPECT_EQ(all[4].data, kCookie);
}

TEST_F(HelpSystemTest, TheRegisteredViewerComesFirstThenTheUsualOne) {
  HKEY key = nullptr;
  ASSERT_EQ(::RegCreateKeyExW(HKEY_LOCAL_MACHINE,
                              L"Software\\Classes\\CLSID\\"
                              L"{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32",
                              0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  constexpr wchar_t kPath[] = L"\\system\\viewer.ocx";
  ::RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(kPath), sizeof(kPath));
  ::RegCloseKey(key);
  for (const wchar_t* installed : {L"viewer.ocx", L"hhctrl.ocx"}) {
    Install(installed);
    HelpSystem().ShowTopic(L"a.html");
    EXPECT_THAT(Commands(), ElementsAre(HH_INITIALIZE, HH_DISPLAY_TOPIC, HH_UNINITIALIZE));
    platform::UnregisterBuiltInModule(installed);
  }
}

TEST_F(HelpSystemTest, WithoutAViewerOrItsExportNothingHappens) {
  HelpSystem help;
  help.SetHelpFile(L"quillgate.chm");
  help.ShowTopic(kTopicIndex);
  help.ShowPopup(1);
  platform::RegisterBuiltInModule(L"hhctrl.ocx", {});
  HelpSystem().ShowTopic(kTopicIndex);
  EXPECT_THAT(Commands(), ElementsAre());
}

}  // namespace
}  // namespace quillgate
