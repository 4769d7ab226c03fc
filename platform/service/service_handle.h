// The objects of the service control manager's handles. The Find functions check that a handle is
// live, of the right kind, and opened with the access that the call needs. Any thread.
#pragma once

#include <winsvc.h>

#include <memory>
#include <string>

#include "platform/kernel/handle_table.h"

namespace platform {

class ManagerObject final : public Object {
 public:
  explicit ManagerObject(DWORD granted) : access(granted) {}
  const DWORD access;
};

class ServiceObject final : public Object {
 public:
  ServiceObject(std::wstring itsName, DWORD itsType, DWORD granted)
      : name(std::move(itsName)), type(itsType), access(granted) {}
  const std::wstring name;
  const DWORD type;  // as it was when the service was opened
  const DWORD access;
};

// 0, ERROR_INVALID_HANDLE or ERROR_ACCESS_DENIED.
DWORD FindManager(SC_HANDLE handle, DWORD access, std::shared_ptr<ManagerObject>& manager);
DWORD FindService(SC_HANDLE handle, DWORD access, std::shared_ptr<ServiceObject>& service);

SC_HANDLE NewManagerHandle(DWORD access);
SC_HANDLE NewServiceHandle(std::wstring name, DWORD type, DWORD access);

}  // namespace platform
