#include <windows.h>

#include <gtest/gtest.h>

#include <winioctl.h>

#include "platform/kit/failing_call.h"
#include "platform/testing/simulated_machine.h"

namespace {

constexpr const wchar_t* kSample = L"\\\\.\\Sample";
constexpr DWORD kBoth = GENERIC_READ | GENERIC_WRITE;

class DeviceFile : public testing::Test {
 protected:
  ~DeviceFile() override { platform::UnregisterDevice(L"Sample"); }

  static HANDLE Open(const wchar_t* path, DWORD access = kBoth, DWORD share = 0,
                     DWORD disposition = OPEN_EXISTING, DWORD flags = FILE_ATTRIBUTE_NORMAL) {
    return ::CreateFileW(path, access, share, nullptr, disposition, flags, nullptr);
  }
  // The handle is closed again.
  template <class... Options>
  static DWORD OpenError(const wchar_t* path, Options... options) {
    const HANDLE device = Open(path, options...);
    const DWORD error = ErrorOf(device != INVALID_HANDLE_VALUE);
    ::CloseHandle(device);
    return error;
  }
  // Without buffers, whatever sizes are given.
  static DWORD Control(HANDLE device, DWORD code, DWORD inBytes = 0, DWORD outBytes = 0) {
    DWORD returned = 99;
    return ErrorOf(
        ::DeviceIoControl(device, code, nullptr, inBytes, nullptr, outBytes, &returned, nullptr));
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
  for (const wchar_t* missing : {L"\\\\.\\missing", L"\\\\.\\", L"\\tmp\\file", L"Sample"})
    EXPECT_EQ(OpenError(missing), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(OpenError(L""), ERROR_PATH_NOT_FOUND);
  EXPECT_EQ(OpenError(nullptr), ERROR_PATH_NOT_FOUND);
  EXPECT_EQ(OpenError(kSample, kBoth, 0, 2), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(OpenError(kSample, kBoth, 0, OPEN_EXISTING, 0x04000000), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(OpenError(kSample, 0x10000000), ERROR_INVALID_PARAMETER);
  device_->FailOpenWith(ERROR_ACCESS_DENIED);
  EXPECT_EQ(OpenError(kSample), ERROR_ACCESS_DENIED);
  device_->FailOpenWith(NO_ERROR);
  EXPECT_EQ(OpenError(kSample), NO_ERROR) << "the refused opening still holds the device";
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
    const HANDLE first = Open(kSample, each.firstAccess, each.firstShare);
    ASSERT_NE(first, INVALID_HANDLE_VALUE);
    EXPECT_EQ(OpenError(L"\\\\.\\sample", each.access, each.share), each.error) << (&each - cases);
    ::CloseHandle(first);
    EXPECT_EQ(OpenError(kSample), NO_ERROR) << "closing did not give it back";
  }
}

TEST_F(DeviceFile, ControlsWithoutAccessOrBuffersDoNotReachTheDevice) {
  const HANDLE device = Open(kSample, GENERIC_READ);
  const DWORD reads = CTL_CODE(0x22u, 0x800u, METHOD_BUFFERED, FILE_READ_ACCESS);
  EXPECT_EQ(Control(device, reads), NO_ERROR);
  EXPECT_EQ(Control(device, CTL_CODE(0x22u, 0x800u, METHOD_BUFFERED, FILE_WRITE_ACCESS)),
            ERROR_ACCESS_DENIED);
  EXPECT_EQ(Control(device, 1, 4, 0), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Control(device, 1, 0, 4), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(ErrorOf(::DeviceIoControl(device, 1, nullptr, 0, nullptr, 0, nullptr, nullptr)),
            ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Control(INVALID_HANDLE_VALUE, 1), ERROR_INVALID_HANDLE);
  EXPECT_EQ(device_->Codes(), std::vector<DWORD>{reads});
  ::CloseHandle(device);
}

TEST_F(DeviceFile, AResolverIsAskedAfterTheTable) {
  auto resolved = std::make_shared<platform::RecordingDevice>();
  resolved->FailOpenWith(ERROR_GEN_FAILURE);
  platform::SetDeviceResolver([&](std::wstring_view) { return resolved; });
  EXPECT_EQ(OpenError(kSample), NO_ERROR);
  EXPECT_EQ(OpenError(L"\\\\.\\anything"), ERROR_GEN_FAILURE);
}

}  // namespace
