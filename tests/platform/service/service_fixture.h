// Services of a machine of the test's own. Whatever it starts is gone when the test ends.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <winsvc.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/testing/simulated_machine.h"

class ScHandle {
 public:
  explicit ScHandle(SC_HANDLE handle) : handle_(handle) {}
  ScHandle(ScHandle&& other) noexcept : handle_(other.handle_) { other.handle_ = nullptr; }
  ScHandle& operator=(ScHandle&&) = delete;
  ~ScHandle() {
    if (handle_ != nullptr) ::CloseServiceHandle(handle_);
  }
  SC_HANDLE Get() const { return handle_; }

 private:
  SC_HANDLE handle_;
};

// The last error of a call that failed; 0 of one that succeeded.
inline DWORD ErrorOf(BOOL succeeded) {
  return succeeded ? NO_ERROR : ::GetLastError();
}

class ServiceFixture : public testing::Test {
 protected:
  ServiceFixture() { machine_.UseDriverFiles(); }
  ~ServiceFixture() override;

  // The test service, behaving as `mode` tells.
  ScHandle CreateTestService(const std::wstring& name, const std::wstring& mode);
  ScHandle CreateDriver(const std::wstring& name, const std::wstring& image);
  ScHandle Open(const std::wstring& name, DWORD access = SERVICE_ALL_ACCESS);
  // As Open, for a name whose opening must fail; answers the error.
  DWORD OpenError(const std::wstring& name);

  static SERVICE_STATUS StatusOf(const ScHandle& service);
  static DWORD StateOf(const ScHandle& service) { return StatusOf(service).dwCurrentState; }
  static DWORD ProcessOf(const ScHandle& service);
  // Really waits, 10 s at most.
  static bool AwaitState(const ScHandle& service, DWORD state);
  static bool AwaitProcessEnd(const ScHandle& service);
  static void Kill(const ScHandle& service);

  std::filesystem::path ServiceFile(const std::string& fileName) const;
  static std::filesystem::path ProgramFile(const std::string& fileName);

  platform::SimulatedMachine machine_;
  ScHandle manager_{::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS)};

 private:
  std::vector<std::wstring> names_;
};
