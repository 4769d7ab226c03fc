#include "gate/ip_filter_hook.h"

namespace quillgate {
namespace {

constexpr wchar_t kFilterName[] = L"IpFilterDriver";
constexpr wchar_t kFilterFile[] = L"System32\\Drivers\\IpFltDrv.sys";
constexpr wchar_t kHookName[] = L"QGIpHook";

}  // namespace

bool IpFilterHook::Start() {
  available_ = false;
  if (filterDriver_.Open(kFilterName, FILE_ATTRIBUTE_NORMAL, kFilterFile, nullptr) != NO_ERROR) {
    return false;
  }
  hookDriver_.SetReconfigureExisting(true);
  available_ = hookDriver_.Open(kHookName, FILE_FLAG_OVERLAPPED | FILE_ATTRIBUTE_NORMAL, nullptr,
                                nullptr) == NO_ERROR;
  return available_;
}

bool IpFilterHook::StartInstalled() {
  filterDriver_.SetInstalledOnly(true);
  hookDriver_.SetInstalledOnly(true);
  return Start();
}

void IpFilterHook::Stop() {
  available_ = false;
  filterDriver_.Close();
  hookDriver_.Close();
}

DWORD IpFilterHook::Error() const {
  if (available_) return NO_ERROR;
  if (filterDriver_.Error() != NO_ERROR) return filterDriver_.Error();
  if (hookDriver_.Error() != NO_ERROR) return hookDriver_.Error();
  return ERROR_SERVICE_NOT_ACTIVE;
}

bool IpFilterHook::Pass() {
  return Send(kHookPass);
}

bool IpFilterHook::Block(bool allowLocal) {
  // The code for local traffic is sent first, so that it applies as soon as the driver blocks. The
  // block is sent in any case.
  const bool localSet = Send(allowLocal ? kHookAllowLocal : kHookBlockLocal);
  const bool blocked = Send(kHookBlock);
  return localSet && blocked;
}

bool IpFilterHook::Send(DWORD code) {
  DWORD returned = 0;
  return ::DeviceIoControl(hookDriver_.Device(), code, nullptr, 0, nullptr, 0, &returned,
                           nullptr) != FALSE;
}

}  // namespace quillgate
