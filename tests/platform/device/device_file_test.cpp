#include <windows.h>

#include <gtest/gtest.h>

#include <winioctl.h>

#include "platform/testing/simulated_machine.h"

namespace {

DWORD LastErrorUnless(BOOL succeeded) {
  return succeeded ? NO_ERROR : ::GetLastError();
}

class DeviceFile : public testing::Test {
 protected:
  ~DeviceFile() override { platform::UnregisterDevice(L"Sample"); }

  static HANDLE Open(const wchar_t* path, DWORD access = GENERIC_READ | GENERIC_WRITE,
                     DWORD share = 0, DWORD disposition = OPEN_EXISTING, DWORD flags = 0x80) {
    return ::CreateFileW(path, access, share, nullptr, disposition, flags, nullptr);
  }
  // The error of an opening that must fail.
  static DWORD OpenError(const wchar_t* path, DWORD access = GENERIC_READ | GENERIC_WRITE,
                         DWORD share = 0, DWORD disposition = OPEN_EXISTING, DWORD flags = 0x80) {
    const HANDLE device = Open(path, access, share, disposition, flags);
    if (device == INVALID_HANDLE_VALUE) return ::GetLastError();
    ::CloseHandle(device);
    return NO_ERROR;
  }
  static DWORD Control(HANDLE device, DWORD code) {
    DWORD returned = 99;
    const BOOL sent = ::DeviceIoControl(device, code, nullptr, 0, nullptr, 0, &returned, nullptr);
    return LastErrorUnless(sent);
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

TEST_F(DeviceFile, WhatCannotBeOpenedIsRefusedByItsDocumentedError) {
  constexpr DWORD kBoth = GENERIC_READ | GENERIC_WRITE;
  const struct {
    const wchar_t* path;
    DWORD access;
    DWORD disposition;
    DWORD flags;
    DWORD error;
  } cases[] = {
      {L"\\\\.\\missing", kBoth, OPEN_EXISTING, 0x80, ERROR_FILE_NOT_FOUND},
      {L"\\\\.\\", kBoth, OPEN_EXISTING, 0x80, ERROR_FILE_NOT_FOUND},
      {L"\\tmp\\file", kBoth, OPEN_EXISTING, 0x80, ERROR_FILE_NOT_FOUND},
      {L"Sample", kBoth, OPEN_EXISTING, 0x80, ERROR_FILE_NOT_FOUND},
      {L"", kBoth, OPEN_EXISTING, 0x80, ERROR_PATH_NOT_FOUND},
      {nullptr, kBoth, OPEN_EXISTING, 0x80, ERROR_PATH_NOT_FOUND},
      {L"\\\\.\\Sample", kBoth, 2, 0x80, ERROR_INVALID_PARAMETER},
      {L"\\\\.\\Sample", kBoth, OPEN_EXISTING, 0x04000000, ERROR_INVALID_PARAMETER},
      {L"\\\\.\\Sample", 0x10000000, OPEN_EXISTING, 0x80, ERROR_INVALID_PARAMETER},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(OpenError(each.path, each.access, 0, each.disposition, each.flags), each.error)
        << (&each - cases);
  }
  device_->FailOpenWith(ERROR_ACCESS_DENIED);
  EXPECT_EQ(OpenError(L"\\\\.\\Sample"), ERROR_ACCESS_DENIED);
  device_->FailOpenWith(NO_ERROR);
  EXPECT_EQ(OpenError(L"\\\\.\\Sample"), NO_ERROR) << "the refused opening still holds the device";
}

TEST_F(DeviceFile, SharingIsJudgedInBothDirections) {
  constexpr DWORD kRead = GENERIC_READ;
  constexpr DWORD kBoth = GENERIC_READ | GENERIC_WRITE;
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

TEST_F(DeviceFile, AControlCodeNeedsTheAccessThatItNames) {
  const HANDLE device = Open(L"\\\\.\\Sample", GENERIC_READ);
  EXPECT_EQ(Control(device, CTL_CODE(0x22u, 0x800u, METHOD_BUFFERED, FILE_READ_ACCESS)), NO_ERROR);
  EXPECT_EQ(Control(device, CTL_CODE(0x22u, 0x800u, METHOD_BUFFERED, FILE_WRITE_ACCESS)),
            ERROR_ACCESS_DENIED);
  EXPECT_EQ(device_->Codes().size(), 1u);
  ::CloseHandle(device);
}

TEST_F(DeviceFile, BuffersThatDoNotExistAreNotTouched) {
  const HANDLE device = Open(L"\\\\.\\Sample");
  DWORD returned = 0;
  EXPECT_EQ(
      LastErrorUnless(::DeviceIoControl(device, 1, nullptr, 4, nullptr, 0, &returned, nullptr)),
      ERROR_INVALID_PARAMETER);
  EXPECT_EQ(
      LastErrorUnless(::DeviceIoControl(device, 1, nullptr, 0, nullptr, 4, &returned, nullptr)),
      ERROR_INVALID_PARAMETER);
  EXPECT_EQ(LastErrorUnless(::DeviceIoControl(device, 1, nullptr, 0, nullptr, 0, nullptr, nullptr)),
            ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Control(INVALID_HANDLE_VALUE, 1), ERROR_INVALID_HANDLE);
  EXPECT_TRUE(device_->Codes().empty());
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
