// What a run of the program does in each of its roles.
#include "service/process_entry.h"

#include <filesystem>

#include "gate/service_record.h"
#include "service/service_installation.h"
#include "service_test.h"

namespace quillgate {
namespace {

using testing::IsEmpty;

class ProcessEntryTest : public testing::Test {
 protected:
  // One process of its own, as far as the process's objects go.
  int Run(std::vector<std::wstring> arguments) {
    ProcessObjects objects;
    ServiceModule module(objects);
    arguments.insert(arguments.begin(), L"\\opt\\gate\\qgserv");
    testing::internal::CaptureStdout();
    const int code = RunProcess(module, objects, arguments);
    output_ = testing::internal::GetCapturedStdout();
    return code;
  }

  // Takes the value away; empty when there is none.
  static std::wstring TakeInstallPath() {
    HKEY key = nullptr;
    ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Quillgate", 0, nullptr, 0, KEY_ALL_ACCESS,
                      nullptr, &key, nullptr);
    const RegistryKey owner(key);
    wchar_t text[300] = {};
    DWORD type = 0;
    DWORD bytes = sizeof text;
    if (::RegQueryValueExW(key, L"IInstallPath", nullptr, &type, reinterpret_cast<BYTE*>(text),
                           &bytes) != 0) {
      return {};
    }
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    ::RegDeleteValueW(key, L"IInstallPath");
    return {text, bytes / sizeof(wchar_t)};
  }

  platform::SimulatedMachine machine_;
  std::string output_;
};

TEST_F(ProcessEntryTest, EveryRoleRecordsTheFolderWithItsTerminatorAndSaysWhatItMust) {
  const std::pair<std::vector<std::wstring>, const char*> roles[] = {
      {{L"Setup"}, ""},
      {{L"Uninstall"}, ""},
      {{}, "StartServiceCtrlDispatcher Error=1063\n"},
  };
  for (const auto& [arguments, output] : roles) {
    SCOPED_TRACE(testing::PrintToString(arguments));
    EXPECT_EQ(Run(arguments), 0);
    EXPECT_EQ(output_, output);
    EXPECT_EQ(TakeInstallPath(), std::wstring(L"\\opt\\gate\0", 10));
    EXPECT_FALSE(IsServiceInstalled());
    EXPECT_THAT(machine_.MessageBoxes(), IsEmpty());
    EXPECT_THAT(machine_.Events(), IsEmpty());
  }
}

TEST_F(ProcessEntryTest, ASetupWizardWithoutADesktopFailsAndSaysHowToRunItLater) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(Run({L"/SetupWizard"}), 1);
  EXPECT_THAT(testing::internal::GetCapturedStderr(),
              testing::EndsWith("use the command \"qgserv SetupWizard\".\n"));
  EXPECT_EQ(output_, "");
  EXPECT_THAT(machine_.Events(), IsEmpty());
}

TEST_F(ProcessEntryTest, AnInstalledServiceIsInteractiveAndStartsWithTheSystemUntilUninstalled) {
  for (int time = 0; time < 2; ++time) {
    EXPECT_EQ(machine_.Time().TotalSlept().count(), 0);
    EXPECT_EQ(Run({L"-Install"}), 0);
    const auto record = Record(L"qgserv");
    ASSERT_TRUE(record);
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    EXPECT_EQ(record->type, 0x110u);
    EXPECT_EQ(record->startType, SERVICE_AUTO_START);
    EXPECT_EQ(record->errorControl, SERVICE_ERROR_NORMAL);
    EXPECT_EQ(record->file, path);
    EXPECT_EQ(record->displayName, L"Quillgate");
  }
  EXPECT_EQ(machine_.Time().TotalSlept().count(), 1500) << "for the former service to go";
  for (int time = 0; time < 2; ++time) {
    EXPECT_EQ(Run({L"/UNINSTALL"}), 0);
    EXPECT_FALSE(IsServiceInstalled());
  }
  EXPECT_THAT(machine_.MessageBoxes(), IsEmpty());
}

TEST_F(ProcessEntryTest, ADatabaseThatCannotBeOpenedIsShownAndTheServiceAskedToStop) {
  std::filesystem::create_directory(machine_.ProgramFolder() / "quillgate.dat");
  EXPECT_EQ(Run({L"Install"}), 1);
  const auto boxes = machine_.MessageBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].caption, L"Quillgate");
  EXPECT_EQ(boxes[0].type, MB_ICONERROR);
  EXPECT_NE(boxes[0].text, L"");
  EXPECT_EQ(boxes[1].caption, L"qgserv");
  EXPECT_EQ(boxes[1].type, MB_OK);
  EXPECT_EQ(boxes[1].text, L"Couldn't open service.");
  EXPECT_FALSE(IsServiceInstalled());
}

TEST_F(ProcessEntryTest, AnotherProcessSeesThatOneRuns) {
  const auto exists = [] {
    const KernelHandle mutex(::CreateMutexW(nullptr, FALSE, L"Global\\QuillgateServiceRunning"));
    return ::GetLastError() == ERROR_ALREADY_EXISTS;
  };
  EXPECT_FALSE(exists());
  ProcessObjects objects;
  const ServiceModule module(objects);
  EXPECT_TRUE(exists());
}

}  // namespace
}  // namespace quillgate
