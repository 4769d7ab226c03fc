#include "gate/kernel_driver.h"

#include <filesystem>
#include <fstream>

#include "gate/service_record.h"
#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

constexpr wchar_t kInstalledFile[] = L"%SystemRoot%\\system32\\Drivers\\QGIpHook.sys";
constexpr wchar_t kOldFile[] = L"C:\\Old\\QGIpHook.sys";

class KernelDriverTest : public testing::Test {
 protected:
  static DWORD Open(KernelDriver& driver, const wchar_t* name = L"QGIpHook") {
    return driver.Open(name, FILE_ATTRIBUTE_NORMAL, nullptr, nullptr);
  }

  platform::SimulatedMachine machine_;
  std::shared_ptr<platform::RecordingDevice> device_ = machine_.AddDriver(L"QGIpHook", L"QGIpHook");
};

TEST_F(KernelDriverTest, OnlyWhatItMayChangeOfAServiceChangesAndOnlyWhatItStartedIsStopped) {
  enum Before { kNone, kStopped, kRunning };
  const struct {
    Before before;
    bool reconfigure;
    DWORD startType;
    const wchar_t *file, *displayName;
    DWORD stateAfterClose;
  } cases[] = {
      {kNone, false, SERVICE_SYSTEM_START, kInstalledFile, L"QGIpHook", SERVICE_STOPPED},
      {kStopped, false, SERVICE_SYSTEM_START, kOldFile, L"Old name", SERVICE_STOPPED},
      {kStopped, true, SERVICE_DEMAND_START, kInstalledFile, L"QGIpHook", SERVICE_STOPPED},
      {kRunning, false, SERVICE_SYSTEM_START, kOldFile, L"Old name", SERVICE_RUNNING},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(&each - cases);
    if (each.before != kNone) Register(L"QGIpHook", L"Old name", kOldFile);
    if (each.before == kRunning) ::StartServiceW(OpenService(L"QGIpHook").Get(), 0, nullptr);
    KernelDriver driver;
    driver.SetReconfigureExisting(each.reconfigure);
    ASSERT_EQ(Open(driver), NO_ERROR);
    EXPECT_NE(driver.Device(), INVALID_HANDLE_VALUE);
    const auto record = Record(L"QGIpHook");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->type, SERVICE_KERNEL_DRIVER);
    EXPECT_EQ(record->startType, each.startType);
    EXPECT_EQ(record->errorControl, SERVICE_ERROR_NORMAL);
    EXPECT_EQ(record->file, each.file);
    EXPECT_EQ(record->displayName, each.displayName);
    EXPECT_EQ(record->state, SERVICE_RUNNING);
    driver.Close();
    EXPECT_EQ(driver.Device(), INVALID_HANDLE_VALUE);
    EXPECT_EQ(Record(L"QGIpHook")->state, each.stateAfterClose);
    const ServiceHandle service = OpenService(L"QGIpHook");
    SERVICE_STATUS status{};
    ::ControlService(service.Get(), SERVICE_CONTROL_STOP, &status);
    ASSERT_TRUE(::DeleteService(service.Get()));
  }
}

TEST_F(KernelDriverTest, ADriverFileInTheCurrentFolderIsPreferred) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(machine_.Root());
  std::ofstream("QGIpHook.sys") << "image";
  wchar_t folder[MAX_PATH] = {};
  ASSERT_NE(::GetCurrentDirectoryW(MAX_PATH, folder), 0u);
  KernelDriver driver;
  Open(driver);
  driver.Close();
  std::filesystem::current_path(before);
  EXPECT_EQ(Record(L"QGIpHook")->file, std::wstring(folder) + L"\\QGIpHook.sys");
}

TEST_F(KernelDriverTest, WithoutItsDeviceADriverIsAnErrorAndHoldsNoHandle) {
  KernelDriver missing;
  EXPECT_EQ(Open(missing, L"Missing"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(missing.Device(), INVALID_HANDLE_VALUE);
  EXPECT_EQ(missing.Error(), ERROR_FILE_NOT_FOUND);

  device_->FailOpenWith(ERROR_ACCESS_DENIED);
  KernelDriver locked;
  EXPECT_EQ(Open(locked), ERROR_ACCESS_DENIED);
  locked.Close();
  EXPECT_EQ(Record(L"QGIpHook")->state, SERVICE_STOPPED);
  device_->FailOpenWith(NO_ERROR);
  EXPECT_EQ(Open(locked), NO_ERROR);
  EXPECT_EQ(locked.Error(), NO_ERROR);
  locked.Close();
}

TEST_F(KernelDriverTest, ADevicePathGetsItsPrefixUnlessItEndsWithABackslashAndLongTextsAreCut) {
  const struct {
    std::wstring name, path, device;  // path empty: none
  } cases[] = {
      {L"Test", L"Card", L"Card"},
      {L"Test", L"\\\\.\\Card\\", L"Card\\"},
      {std::wstring(130, L'n'), L"", std::wstring(127, L'n')},
      {L"Test", std::wstring(252, L'd'), std::wstring(251, L'd')},
      // Cut to 255 characters first, so the backslash at the end is not seen.
      {L"Test", std::wstring(255, L'e') + L"\\", std::wstring(251, L'e')},
  };
  // Every name that no registered device has is answered, and noted.
  std::wstring opened;
  platform::SetDeviceResolver([&opened](std::wstring_view name) {
    opened = name;
    return std::make_shared<platform::RecordingDevice>();
  });
  for (const auto& [name, path, device] : cases) {
    KernelDriver driver;
    EXPECT_EQ(driver.Open(name.c_str(), FILE_ATTRIBUTE_NORMAL, std::wstring(300, L'f').c_str(),
                          path.empty() ? nullptr : path.c_str()),
              NO_ERROR);
    EXPECT_EQ(opened, device);
    driver.Close();
  }
  EXPECT_EQ(Record(L"Test")->file, std::wstring(260, L'f'));
}

}  // namespace
}  // namespace quillgate
