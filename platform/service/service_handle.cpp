#include "platform/service/service_handle.h"

#include <windows.h>

#include "platform/kernel/api_result.h"

namespace platform {
namespace {

template <class T>
DWORD FindWithAccess(HandleKind kind, SC_HANDLE handle, DWORD access, std::shared_ptr<T>& object) {
  auto found = Resolve<T>(kind, handle);
  if (found == nullptr) return ERROR_INVALID_HANDLE;
  if ((found->access & access) != access) return ERROR_ACCESS_DENIED;
  object = std::move(found);
  return NO_ERROR;
}

}  // namespace

DWORD FindManager(SC_HANDLE handle, DWORD access, std::shared_ptr<ManagerObject>& manager) {
  return FindWithAccess(HandleKind::kServiceManager, handle, access, manager);
}

DWORD FindService(SC_HANDLE handle, DWORD access, std::shared_ptr<ServiceObject>& service) {
  return FindWithAccess(HandleKind::kService, handle, access, service);
}

SC_HANDLE NewManagerHandle(DWORD access) {
  return static_cast<SC_HANDLE>(
      Handles().Insert(HandleKind::kServiceManager, std::make_shared<ManagerObject>(access)));
}

SC_HANDLE NewServiceHandle(std::wstring name, DWORD type, DWORD access) {
  return static_cast<SC_HANDLE>(Handles().Insert(
      HandleKind::kService, std::make_shared<ServiceObject>(std::move(name), type, access)));
}

}  // namespace platform

extern "C" BOOL WINAPI CloseServiceHandle(SC_HANDLE handle) try {
  using platform::HandleKind;
  const bool closed = platform::Handles().Remove(HandleKind::kService, handle) != nullptr ||
                      platform::Handles().Remove(HandleKind::kServiceManager, handle) != nullptr;
  return platform::BoolResult(closed ? NO_ERROR : ERROR_INVALID_HANDLE);
} catch (...) {
  return platform::FailedCall(FALSE);
}
