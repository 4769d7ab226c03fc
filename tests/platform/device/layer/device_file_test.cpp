#include <windows.h>

#include <gtest/gtest.h>

#include <winioctl.h>

#include "platform/kit/failing_call.h"
#include "platform/testing/simulated_machine.h"

namespace {

constexpr DWORD kBoth = GENERIC_READ | GENERIC_WRITE;

class DeviceFile : public testing::Test {
 protected:
  ~DeviceFile() override { platform::UnregisterDevice(L"Sample"); }

  static HANDLE Open(const wchar_t* path, DWORD access = kBoth, DWORD share = 0,
                     DWORD disposition = OPEN_EXISTING, DWORD flags = FILE_ATTRIBUTE_NORMAL) {
    return ::CreateFileW(path, access, share, nullptr, disposition, flags, nullptr);
  }
  // The error of an opening, whose handle is closed again.
  static DWORD OpenError(const wchar_t* path, DWORD access = kBoth, DWORD share = 0,
                         DWORD disposition = OPEN_EXISTING, DWORD flags = FILE_ATTRIBUTE_NORMAL) {
    const HANDLE device = Open(path, access, share, disposition, flags);
    const DWORD error = ::GetLastError();
    return ::CloseHandle(device) ? NO_ERROR : error;
  }
  static DWORD Control(HANDLE device, DWORD code) {
    DWORD returned = 99;
    const BOOL sent = ::DeviceIoControl(device, code, nullptr, 0, nullptr, 0, &returned, nullptr);
    return sent ? NO_ERROR : ::GetLastError();
  }

  platform::SimulatedMachine machine_;
  std::shared_ptr<platform::RecordingDevice> device_ =
      std::make_shared<platform::RecordingDevice>();
  const bool registered_ = platform::RegisterDevice(L"Sample", device_);
};

TEST_F(DeviceFile, OpensByNameInAnyCaseAndPassesCodesOn) {
  ASSERT_TRUE(registered_);
  const HANDLE device = Open(L"\\\\.\\sAMPLE", GENERIC_READ | GENERIC_WRITE, 0, OPEN_EXISTING,
                             FILE_FLAG_OVERLAPPED | FILE_ATTRIBUTE_NORMAL);
  ASSERT_NE(device, INVALID_HANDLE_VALUE) << ::GetLastError();
  EXPECT_EQ(Control(device, 0x939C2094), NO_ERROR);
  device_->FailControlWith(ERROR_INVALID_FUNCTION);
  EXPECT_EQ(Control(device, 0x939C2098), ERROR_INVALID_FUNCTION);
  EXPECT_EQ(device_->Codes(), (std::vector<DWORD>{0x939C2094, 0x939C2098}));
  EXPECT_TRUE(::CloseHandle(device));
  EXPECT_EQ(Control(device, 0x939C2094), ERROR_INVALID_HANDLE);
}

TEST_F(DeviceFile, MissingDevicesAndUnsupportedWaysFailToOpen) {
  const wchar_t* sample = L"\\\\.\\Sample";
  const auto open = [](const wchar_t* path, DWORD access = kBoth, DWORD disposition = OPEN_EXISTING,
                       DWORD flags = FILE_ATTRIBUTE_NORMAL) {
    return [=] { return Open(path, access, 0, disposition, flags) != INVALID_HANDLE_VALUE; };
  };
  ExpectFailures({
      {"missing device", open(L"\\\\.\\missing"), ERROR_FILE_NOT_FOUND},
      {"no device", open(L"\\\\.\\"), ERROR_FILE_NOT_FOUND},
      {"file", open(L"\\tmp\\file"), ERROR_FILE_NOT_FOUND},
      {"name alone", open(L"Sample"), ERROR_FILE_NOT_FOUND},
      {"empty path", open(L""), ERROR_PATH_NOT_FOUND},
      {"no path", open(nullptr), ERROR_PATH_NOT_FOUND},
      {"disposition", open(sample, kBoth, 2), ERROR_INVALID_PARAMETER},
      {"flags", open(sample, kBoth, OPEN_EXISTING, 0x04000000), ERROR_INVALID_PARAMETER},
      {"access", open(sample, 0x10000000), ERROR_INVALID_PARAMETER},
  });
  device_->FailOpenWith(ERROR_ACCESS_DENIED);
  ExpectFailures({{"device's refusal", open(sample), ERROR_ACCESS_DENIED}});
  device_->FailOpenWith(NO_ERROR);
  EXPECT_EQ(OpenError(sample), NO_ERROR) << "the refused opening still holds the device";
}

TEST_F(DeviceFile, SharingIsJudgedInBothDirections) {
  constexpr DWORD kRead = GENERIC_READ;
  constexpr DWORD kShareBoth = FILE_SHARE_READ | FILE_SHARE_WRITE;
  const struct {
    DWORD firstAccess, firstShare, access, share, error;
  } cases[] = {
      {kBoth, 0, kRead, kShareBoth, ERROR_SHARING_VIOLATION},
      {kRead, FILE_SHARE_READ, kRead, FILE_SHARE_READ, NO_ERROR},
      {kRead, FILE_SHARE_READ, kBoth, kShareBoth, ERROR_SHARING_VIOLATION},
      {kBoth, kShareBoth, kRead, FILE_SHARE_READ, ERROR_SHARING_VIOLATION},
      {kBoth, kShareBoth, kBoth, kShareBoth, NO_ERROR},
      {kBoth, 0, 0, 0, NO_ERROR},
      {0, 0, kBoth, 0, NO_ERROR},
  };
  for (const auto& each : cases) {
    const HANDLE first = Open(L"\\\\.\\Sample", each.firstAccess, each.firstShare);
    ASSERT_NE(first, INVALID_HANDLE_VALUE);
    EXPECT_EQ(OpenError(L"\\\\.\\sample", each.access, each.share), each.error) << (&each - cases);
    ::CloseHandle(first);
    EXPECT_EQ(OpenError(L"\\\\.\\Sample"), NO_ERROR) << "closing did not give it back";
  }
}

TEST_F(DeviceFile, ControlsWithoutAccessOrBuffersDoNotReachTheDevice) {
  const HANDLE device = Open(L"\\\\.\\Sample", GENERIC_READ);
  const auto reads = CTL_CODE(0x22u, 0x800u, METHOD_BUFFERED, FILE_READ_ACCESS);
  const auto writes = CTL_CODE(0x22u, 0x800u, METHOD_BUFFERED, FILE_WRITE_ACCESS);
  EXPECT_EQ(Control(device, reads), NO_ERROR);
  DWORD returned = 0;
  const auto control = [](HANDLE file, DWORD code, DWORD inBytes, DWORD outBytes, DWORD* written) {
    return [=] {
      return ::DeviceIoControl(file, code, nullptr, inBytes, nullptr, outBytes, written, nullptr);
    };
  };
  ExpectFailures({
      {"write access", control(device, writes, 0, 0, &returned), ERROR_ACCESS_DENIED},
      {"no input", control(device, 1, 4, 0, &returned), ERROR_INVALID_PARAMETER},
      {"no output", control(device, 1, 0, 4, &returned), ERROR_INVALID_PARAMETER},
      {"no size", control(device, 1, 0, 0, nullptr), ERROR_INVALID_PARAMETER},
      {"no file", control(INVALID_HANDLE_VALUE, 1, 0, 0, &returned), ERROR_INVALID_HANDLE},
  });
  EXPECT_EQ(device_->Codes(), std::vector<DWORD>{reads});
  ::CloseHandle(device);
}

TEST_F(DeviceFile, AResolverIsAskedAfterTheTable) {
  auto resolved = std::make_shared<platform::RecordingDevice>();
  resolved->FailOpenWith(ERROR_GEN_FAILURE);
  platform::SetDeviceResolver([&](std::wstring_view) { return resolved; });
  EXPECT_EQ(OpenError(L"\\\\.\\Sample"), NO_ERROR);
  EXPECT_EQ(OpenError(L"\\\\.\\anything"), ERROR_GEN_FAILURE);
}

}  // namespace
