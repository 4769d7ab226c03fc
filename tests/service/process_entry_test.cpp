// What a run of the program does in each of its roles.
#include "service/process_entry.h"

#include <winsvc.h>

#include <filesystem>

#include "handles/handle.h"
#include "service/service_installation.h"
#include "service_test.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

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

  static std::wstring InstallPath() {
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Quillgate", 0, KEY_READ, &key) != 0) {
      return L"(no key)";
    }
    const RegistryKey owner(key);
    wchar_t text[300] = {};
    DWORD type = 0;
    DWORD bytes = sizeof(text);
    if (::RegQueryValueExW(key, L"IInstallPath", nullptr, &type, reinterpret_cast<BYTE*>(text),
                           &bytes) != 0 ||
        type != REG_SZ) {
      return L"(no value)";
    }
    return {text, bytes / sizeof(wchar_t)};
  }

  platform::SimulatedMachine machine_;
  std::string output_;
};

TEST_F(ProcessEntryTest, EveryRoleRecordsTheFolderOfTheProgramWithItsTerminator) {
  for (const wchar_t* word : {L"Setup", L"Uninstall", L"-"}) {
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Quillgate", 0, KEY_WRITE, &key) == 0) {
      const RegistryKey owner(key);
      ::RegDeleteValueW(key, L"IInstallPath");
    }
    Run({word});
    EXPECT_EQ(InstallPath(), std::wstring(L"\\opt\\gate\0", 10)) << word;
  }
}

TEST_F(ProcessEntryTest, AnUnknownWordDoesNothingSilently) {
  EXPECT_EQ(Run({L"Setup"}), 0);
  EXPECT_EQ(output_, "");
  EXPECT_FALSE(IsServiceInstalled());
  EXPECT_THAT(machine_.MessageBoxes(), IsEmpty());
  EXPECT_THAT(machine_.Events(), IsEmpty());
}

TEST_F(ProcessEntryTest, TheMissingWizardSaysThatItIsMissing) {
  EXPECT_EQ(Run({L"/SetupWizard"}), 0);
  EXPECT_EQ(output_, "The setup wizard is not available in this version.\n");
}

TEST_F(ProcessEntryTest, AServiceThatTheManagerDidNotStartEndsWithTheDispatchersError) {
  EXPECT_EQ(Run({}), 0);
  EXPECT_EQ(output_, "StartServiceCtrlDispatcher Error=1063\n");
  EXPECT_THAT(machine_.Events(), IsEmpty());
}

TEST_F(ProcessEntryTest, InstallingMakesAnInteractiveServiceThatStartsWithTheSystem) {
  EXPECT_EQ(Run({L"-Install"}), 0);
  const ServiceHandle manager(::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
  const ServiceHandle service(::OpenServiceW(manager.Get(), L"qgserv", SERVICE_QUERY_CONFIG));
  ASSERT_TRUE(service.IsValid());
  DWORD bytes = 0;
  ::QueryServiceConfigW(service.Get(), nullptr, 0, &bytes);
  std::vector<QUERY_SERVICE_CONFIGW> buffer(bytes / sizeof(QUERY_SERVICE_CONFIGW) + 1);
  ASSERT_TRUE(::QueryServiceConfigW(service.Get(), buffer.data(), bytes, &bytes));
  const QUERY_SERVICE_CONFIGW& config = buffer.front();
  wchar_t path[MAX_PATH] = {};
  ::GetModuleFileNameW(nullptr, path, MAX_PATH);
  EXPECT_EQ(config.dwServiceType, 0x110u);
  EXPECT_EQ(config.dwStartType, SERVICE_AUTO_START);
  EXPECT_EQ(config.dwErrorControl, SERVICE_ERROR_NORMAL);
  EXPECT_STREQ(config.lpBinaryPathName, path);
  EXPECT_STREQ(config.lpDisplayName, L"Quillgate");
  EXPECT_EQ(machine_.Time().TotalSlept().count(), 0);
}

TEST_F(ProcessEntryTest, InstallingTwicePausesForTheFormerServiceToGo) {
  Run({L"Install"});
  EXPECT_EQ(Run({L"Install"}), 0);
  EXPECT_EQ(machine_.Time().TotalSlept().count(), 1500);
  EXPECT_TRUE(IsServiceInstalled());
  EXPECT_THAT(machine_.MessageBoxes(), IsEmpty());
}

TEST_F(ProcessEntryTest, UninstallingRemovesTheServiceAndASecondTimeChangesNothing) {
  Run({L"Install"});
  EXPECT_EQ(Run({L"/UNINSTALL"}), 0);
  EXPECT_FALSE(IsServiceInstalled());
  EXPECT_TRUE(UninstallService());
  EXPECT_THAT(machine_.MessageBoxes(), IsEmpty());
}

TEST_F(ProcessEntryTest, StoppingAServiceThatIsNotThereIsToldWithItsNameAsCaption) {
  StopOwnService();
  ASSERT_THAT(machine_.MessageBoxes(), SizeIs(1));
  EXPECT_EQ(machine_.MessageBoxes()[0].text, L"Couldn't open service.");
  EXPECT_EQ(machine_.MessageBoxes()[0].caption, L"qgserv");
  EXPECT_EQ(machine_.MessageBoxes()[0].type, MB_OK);
}

TEST_F(ProcessEntryTest, ADatabaseThatCannotBeOpenedIsShownAndTheServiceAskedToStop) {
  std::filesystem::create_directory(machine_.ProgramFolder() / "quillgate.dat");
  EXPECT_EQ(Run({L"Install"}), 1);
  ASSERT_THAT(machine_.MessageBoxes(), SizeIs(2));
  const platform::MessageBoxRequest shown = machine_.MessageBoxes()[0];
  EXPECT_EQ(shown.caption, L"Quillgate");
  EXPECT_EQ(shown.type, MB_ICONERROR);
  EXPECT_NE(shown.text, L"");
  EXPECT_EQ(machine_.MessageBoxes()[1].text, L"Couldn't open service.");
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
