// CreateFileW and DeviceIoControl.
#include <windows.h>
#include <winioctl.h>

#include <string>

#include "platform/device/open_device.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr std::wstring_view kDevicePrefix = L"\\\\.\\";

struct FileRequest {
  std::wstring_view name;
  DWORD access;
  DWORD share;
  DWORD disposition;
  DWORD flags;
  bool inherit;
};

// Requests that Win32 permits and the layer does not support are logged and fail.
DWORD CheckRequest(const FileRequest& request) {
  if (!request.name.starts_with(kDevicePrefix)) {
    LogLine("CreateFileW opens devices only, not " + Utf8(request.name));
    return ERROR_FILE_NOT_FOUND;
  }
  constexpr DWORD kAccess = GENERIC_READ | GENERIC_WRITE;
  constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE;
  constexpr DWORD kFlags = FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OVERLAPPED;
  const bool supported = (request.access & ~kAccess) == 0 && (request.share & ~kShare) == 0 &&
                         (request.flags & ~kFlags) == 0 && request.disposition == OPEN_EXISTING;
  if (supported && !request.inherit) return NO_ERROR;
  LogLine("CreateFileW: access, share mode, disposition or flags that are not supported, for " +
          Utf8(request.name));
  return ERROR_INVALID_PARAMETER;
}

DWORD OpenFile(const FileRequest& request, HANDLE& file) {
  DWORD error = CheckRequest(request);
  if (error != NO_ERROR) return error;
  const std::wstring_view name = request.name.substr(kDevicePrefix.size());
  std::shared_ptr<Device> device = FindDevice(name);
  if (device == nullptr) return ERROR_FILE_NOT_FOUND;
  auto opened = OpenDevice::Create(name, std::move(device), request.access, request.share, error);
  if (opened != nullptr) file = Handles().Insert(HandleKind::kDevice, std::move(opened));
  return error;
}

// Whether the access of the opening includes the two access bits of the control code.
bool Permits(DWORD access, DWORD code) {
  const DWORD needed = (code >> 14) & (FILE_READ_ACCESS | FILE_WRITE_ACCESS);
  return ((needed & FILE_READ_ACCESS) == 0 || (access & GENERIC_READ) != 0) &&
         ((needed & FILE_WRITE_ACCESS) == 0 || (access & GENERIC_WRITE) != 0);
}

DWORD Control(HANDLE handle, DWORD code, std::span<const std::byte> in, std::span<std::byte> out,
              DWORD& returned) {
  const auto opened = Resolve<OpenDevice>(HandleKind::kDevice, handle);
  if (opened == nullptr) return ERROR_INVALID_HANDLE;
  if (!Permits(opened->Access(), code)) return ERROR_ACCESS_DENIED;
  const DWORD error = opened->Target().Control(code, in, out, returned);
  // With a count past the buffer the caller would read uninitialized bytes.
  if (returned > out.size()) returned = static_cast<DWORD>(out.size());
  return error;
}

}  // namespace
}  // namespace platform

extern "C" {

HANDLE WINAPI CreateFileW(LPCWSTR fileName, DWORD access, DWORD share,
                          LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags,
                          HANDLE) try {
  HANDLE file = INVALID_HANDLE_VALUE;
  DWORD error = ERROR_PATH_NOT_FOUND;
  if (fileName != nullptr && *fileName != L'\0') {
    const bool inherit = security != nullptr && security->bInheritHandle != FALSE;
    error = platform::OpenFile({fileName, access, share, disposition, flags, inherit}, file);
  }
  return platform::HandleResult(error, file, INVALID_HANDLE_VALUE);
} catch (...) {
  return platform::FailedCall(INVALID_HANDLE_VALUE);
}

BOOL WINAPI DeviceIoControl(HANDLE device, DWORD code, LPVOID in, DWORD inBytes, LPVOID out,
                            DWORD outBytes, LPDWORD returnedBytes, LPOVERLAPPED overlapped) try {
  if (overlapped != nullptr) platform::LogLine("DeviceIoControl: no overlapped operations");
  const bool buffers = (in != nullptr || inBytes == 0) && (out != nullptr || outBytes == 0);
  if (overlapped != nullptr || returnedBytes == nullptr || !buffers) {
    return platform::BoolResult(ERROR_INVALID_PARAMETER);
  }
  *returnedBytes = 0;
  return platform::BoolResult(
      platform::Control(device, code, {static_cast<const std::byte*>(in), inBytes},
                        {static_cast<std::byte*>(out), outBytes}, *returnedBytes));
} catch (...) {
  return platform::FailedCall(FALSE);
}

}  // extern "C"
