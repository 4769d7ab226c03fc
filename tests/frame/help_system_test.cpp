// What the help viewer is asked for, and that a machine without one takes no harm.
#include "frame/help_system.h"

#include <gmock/gmock.h>

#include "frame/help_topics.h"
#include "platform/testing/simulated_machine.h"
#include "program/recorded_help.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

class HelpSystemTest : public testing::Test {
 protected:
  platform::SimulatedMachine machine_;
};

TEST_F(HelpSystemTest, TopicsAndPopupsStandBehindTheFileAndTheEndIsNotified) {
  const RecordedHelp viewer;
  {
    HelpSystem help;
    help.SetHelpFile(L"quillgate.chm");
    help.ShowTopic(kTopicIndex);
    help.ShowTopic(L"a.html", L"main");
    help.ShowPopup(HelpPopupNumber(128, 1077));
  }
  EXPECT_THAT(
      RecordedHelp::TakeLog(),
      ElementsAre(
          L"begin", L"topic quillgate.chm::/html/index.html", L"topic quillgate.chm::/a.html>main",
          L"popup " + std::to_wstring(0x80800435) + L" in quillgate.chm::/popups.txt", L"end"));
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
    const RecordedHelp viewer(installed);
    HelpSystem().ShowTopic(L"a.html");
    EXPECT_THAT(RecordedHelp::TakeLog(), testing::SizeIs(3)) << installed;
  }
}

TEST_F(HelpSystemTest, WithoutAViewerOrItsExportNothingHappens) {
  HelpSystem help;
  help.SetHelpFile(L"quillgate.chm");
  help.ShowTopic(kTopicIndex);
  help.ShowPopup(1);
  platform::RegisterBuiltInModule(L"hhctrl.ocx", {});
  HelpSystem().ShowTopic(kTopicIndex);
  EXPECT_THAT(RecordedHelp::TakeLog(), testing::IsEmpty());
  platform::UnregisterBuiltInModule(L"hhctrl.ocx");
}

}  // namespace
}  // namespace quillgate
