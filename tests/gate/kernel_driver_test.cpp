#include "gate/kernel_driver.h"

#include <gtest/gtest.h>

#include <winsvc.h>

#include <filesystem>
#include <fstream>

#include "gate_test.h"

namespace quillgate {
namespace {

constexpr wchar_t kInstalledFile[] = L"%SystemRoot%\\system32\\Drivers\\QGIpHook.sys";

class KernelDriverTest : public GateTest {
 protected:
  // Answers for every name that no registered device has, and notes it.
  void AcceptEveryDevice() {
    platform::SetDeviceResolver([this](std::wstring_view name) {
      deviceName_ = name;
      return std::make_shared<platform::RecordingDevice>();
    });
  }

  std::wstring deviceName_;
};

TEST_F(KernelDriverTest, ANewDriverIsRegisteredToStartWithTheSystemAndRuns) {
  machine_.AddDriver(L"QGIpHook", L"QGIpHook");
  KernelDriver driver;
  ASSERT_EQ(driver.Open(L"QGIpHook", FILE_ATTRIBUTE_NORMAL, nullptr, nullptr), NO_ERROR);
  EXPECT_NE(driver.Device(), INVALID_HANDLE_VALUE);
  const auto record = Record(L"QGIpHook");
  ASSERT_TRUE(record);
  EXPECT_EQ(record->type, SERVICE_KERNEL_DRIVER);
  EXPECT_EQ(record->startType, SERVICE_SYSTEM_START);
  EXPECT_EQ(record->errorControl, SERVICE_ERROR_NORMAL);
  EXPECT_EQ(record->file, kInstalledFile);
  EXPECT_EQ(record->displayName, L"QGIpHook");
  EXPECT_EQ(record->state, SERVICE_RUNNING);
  driver.Close();
}

TEST_F(KernelDriverTest, AnExistingDriverIsReconfiguredOnlyWhenAsked) {
  machine_.AddDriver(L"QGIpHook", L"QGIpHook");
  for (const bool reconfigure : {false, true}) {
    Register(L"QGIpHook", L"Old name", SERVICE_SYSTEM_START, L"C:\\Old\\QGIpHook.sys");
    KernelDriver driver;
    driver.SetReconfigureExisting(reconfigure);
    ASSERT_EQ(driver.Open(L"QGIpHook", FILE_ATTRIBUTE_NORMAL, nullptr, nullptr), NO_ERROR);
    driver.Close();
    const auto record = Record(L"QGIpHook");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->startType, reconfigure ? SERVICE_DEMAND_START : SERVICE_SYSTEM_START);
    EXPECT_EQ(record->file, reconfigure ? kInstalledFile : L"C:\\Old\\QGIpHook.sys");
    EXPECT_EQ(record->displayName, reconfigure ? L"QGIpHook" : L"Old name");
    Unregister(L"QGIpHook");
  }
}

TEST_F(KernelDriverTest, ADriverFileInTheCurrentFolderIsPreferred) {
  machine_.AddDriver(L"QGIpHook", L"QGIpHook");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(machine_.Root());
  std::ofstream("QGIpHook.sys") << "image";
  wchar_t folder[MAX_PATH] = {};
  ASSERT_NE(::GetCurrentDirectoryW(MAX_PATH, folder), 0u);
  KernelDriver driver;
  driver.Open(L"QGIpHook", FILE_ATTRIBUTE_NORMAL, nullptr, nullptr);
  driver.Close();
  std::filesystem::current_path(before);
  EXPECT_EQ(Record(L"QGIpHook")->file, std::wstring(folder) + L"\\QGIpHook.sys");
}

TEST_F(KernelDriverTest, ADriverThatItStartedIsStoppedOnClose) {
  machine_.AddDriver(L"QGIpHook", L"QGIpHook");
  KernelDriver driver;
  ASSERT_EQ(driver.Open(L"QGIpHook", FILE_ATTRIBUTE_NORMAL, nullptr, nullptr), NO_ERROR);
  driver.Close();
  EXPECT_EQ(driver.Device(), INVALID_HANDLE_VALUE);
  EXPECT_EQ(Record(L"QGIpHook")->state, SERVICE_STOPPED);
  driver.Close();
}

TEST_F(KernelDriverTest, ADriverThatRanBeforeIsLeftRunning) {
  machine_.AddDriver(L"QGIpHook", L"QGIpHook");
  Register(L"QGIpHook", L"QGIpHook", SERVICE_DEMAND_START, kInstalledFile);
  StartDriverService(L"QGIpHook");
  KernelDriver driver;
  ASSERT_EQ(driver.Open(L"QGIpHook", FILE_ATTRIBUTE_NORMAL, nullptr, nullptr), NO_ERROR);
  driver.Close();
  EXPECT_EQ(Record(L"QGIpHook")->state, SERVICE_RUNNING);
  StopDriverService(L"QGIpHook");
}

TEST_F(KernelDriverTest, WithoutItsDeviceADriverIsAnErrorAndHoldsNoHandle) {
  KernelDriver missing;
  EXPECT_EQ(missing.Open(L"QGIpHook", FILE_ATTRIBUTE_NORMAL, nullptr, nullptr),
            ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(missing.Device(), INVALID_HANDLE_VALUE);
  EXPECT_EQ(missing.Error(), ERROR_FILE_NOT_FOUND);
  missing.Close();

  const auto device = machine_.AddDriver(L"Locked", L"Locked");
  device->FailOpenWith(ERROR_ACCESS_DENIED);
  KernelDriver locked;
  EXPECT_EQ(
      locked.Open(L"Locked", FILE_ATTRIBUTE_NORMAL, L"System32\\Drivers\\Locked.sys", nullptr),
      ERROR_ACCESS_DENIED);
  locked.Close();
  EXPECT_EQ(Record(L"Locked")->state, SERVICE_STOPPED);

  device->FailOpenWith(NO_ERROR);
  EXPECT_EQ(
      locked.Open(L"Locked", FILE_ATTRIBUTE_NORMAL, L"System32\\Drivers\\Locked.sys", nullptr),
      NO_ERROR);
  EXPECT_EQ(locked.Error(), NO_ERROR);
  locked.Close();
}

TEST_F(KernelDriverTest, TheDevicePathGetsItsPrefixUnlessItEndsWithABackslash) {
  const std::wstring long252(252, L'd');
  const struct {
    std::wstring path;
    std::wstring device;
  } cases[] = {
      {L"Card", L"Card"},
      {L"\\\\.\\Card\\", L"Card\\"},
      {long252, long252.substr(0, 251)},
      // Cut to 255 characters first, so the backslash at the end is not seen.
      {std::wstring(255, L'e') + L"\\", std::wstring(251, L'e')},
  };
  AcceptEveryDevice();
  for (const auto& each : cases) {
    KernelDriver driver;
    EXPECT_EQ(driver.Open(L"Test", FILE_ATTRIBUTE_NORMAL, L"Test.sys", each.path.c_str()),
              NO_ERROR);
    EXPECT_EQ(deviceName_, each.device);
    driver.Close();
  }
}

TEST_F(KernelDriverTest, LongNamesAndFilesAreCut) {
  AcceptEveryDevice();
  KernelDriver longName;
  longName.Open(std::wstring(130, L'n').c_str(), FILE_ATTRIBUTE_NORMAL, L"Test.sys", nullptr);
  EXPECT_EQ(deviceName_, std::wstring(127, L'n'));
  longName.Close();
  KernelDriver longFile;
  longFile.Open(L"Test", FILE_ATTRIBUTE_NORMAL, std::wstring(300, L'f').c_str(), nullptr);
  longFile.Close();
  EXPECT_EQ(Record(L"Test")->file, std::wstring(260, L'f'));
}

}  // namespace
}  // namespace quillgate
