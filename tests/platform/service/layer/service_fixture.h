// Services of a machine of the test's own. Whatever it starts is gone when the test ends.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>
#include <signal.h>

#include <winsvc.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "platform/kit/failing_call.h"
#include "platform/testing/simulated_machine.h"

struct CloseService {
  void operator()(SC_HANDLE handle) const { ::CloseServiceHandle(handle); }
};
using ScHandle = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, CloseService>;

class ServiceFixture : public testing::Test {
 protected:
  ServiceFixture() { machine_.UseDriverFiles(); }
  ~ServiceFixture() override {
    for (const std::wstring& name : names_) {
      const ScHandle service = Open(name);
      if (service != nullptr && ProcessOf(service) != ::GetCurrentProcessId()) Kill(service);
    }
  }

  struct Wanted {
    const wchar_t* name = L"sample";
    const wchar_t* displayName = nullptr;
    DWORD access = SERVICE_ALL_ACCESS;
    DWORD type = SERVICE_WIN32_OWN_PROCESS;
    DWORD startType = SERVICE_DEMAND_START;
    DWORD errorControl = SERVICE_ERROR_NORMAL;
    const wchar_t* image = L"\\opt\\sample";
    const wchar_t* dependencies = nullptr;
    const wchar_t* account = nullptr;
  };

  ScHandle Create(const Wanted& wanted) {
    return ScHandle(::CreateServiceW(manager_.get(), wanted.name, wanted.displayName, wanted.access,
                                     wanted.type, wanted.startType, wanted.errorControl,
                                     wanted.image, nullptr, nullptr, wanted.dependencies,
                                     wanted.account, nullptr));
  }
  // The test service, behaving as `mode` tells.
  ScHandle CreateTestService(const std::wstring& name, const std::wstring& mode) {
    std::wstring image = ProgramFile("platform_test_service").wstring() + L" " + mode;
    std::ranges::replace(image, L'/', L'\\');
    names_.push_back(name);
    return Create({.name = name.c_str(), .image = image.c_str()});
  }
  // As above, and running.
  ScHandle RunTestService(const std::wstring& name, const std::wstring& mode) {
    ScHandle service = CreateTestService(name, mode);
    EXPECT_EQ(Start(service), NO_ERROR);
    EXPECT_TRUE(AwaitState(service, SERVICE_RUNNING));
    return service;
  }
  ScHandle CreateDriver(const std::wstring& name, const std::wstring& image) {
    return Create({.name = name.c_str(),
                   .type = SERVICE_KERNEL_DRIVER,
                   .startType = SERVICE_SYSTEM_START,
                   .image = image.c_str()});
  }
  ScHandle Open(const std::wstring& name, DWORD access = SERVICE_ALL_ACCESS) {
    return ScHandle(::OpenServiceW(manager_.get(), name.c_str(), access));
  }

  // These answer NO_ERROR or the last error.
  DWORD CreateError(const Wanted& wanted) { return ErrorOf(Create(wanted) != nullptr); }
  DWORD OpenError(const std::wstring& name) { return ErrorOf(Open(name) != nullptr); }
  static DWORD Start(const ScHandle& service) {
    return ErrorOf(::StartServiceW(service.get(), 0, nullptr));
  }
  static DWORD Control(const ScHandle& service, DWORD control) {
    return ErrorOf(::ControlService(service.get(), control, &lastStatus_));
  }
  static DWORD Stop(const ScHandle& service) { return Control(service, SERVICE_CONTROL_STOP); }
  static DWORD Change(const ScHandle& service, DWORD startType, LPCWSTR image = nullptr,
                      LPCWSTR displayName = nullptr) {
    return ErrorOf(::ChangeServiceConfigW(service.get(), SERVICE_NO_CHANGE, startType,
                                          SERVICE_NO_CHANGE, image, nullptr, nullptr, nullptr,
                                          nullptr, nullptr, displayName));
  }

  static SERVICE_STATUS StatusOf(const ScHandle& service) {
    SERVICE_STATUS status{};
    EXPECT_TRUE(::QueryServiceStatus(service.get(), &status)) << ::GetLastError();
    return status;
  }
  static DWORD StateOf(const ScHandle& service) { return StatusOf(service).dwCurrentState; }
  static DWORD ProcessOf(const ScHandle& service) {
    SERVICE_STATUS_PROCESS status{};
    DWORD needed = 0;
    EXPECT_TRUE(::QueryServiceStatusEx(service.get(), SC_STATUS_PROCESS_INFO,
                                       reinterpret_cast<LPBYTE>(&status), sizeof status, &needed));
    return status.dwProcessId;
  }
  // Really waits, 10 s at most.
  template <class Condition>
  static bool Await(Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition() && std::chrono::steady_clock::now() < deadline)
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return condition();
  }
  static bool AwaitState(const ScHandle& service, DWORD state) {
    return Await([&] { return StateOf(service) == state; });
  }
  static bool AwaitProcessEnd(const ScHandle& service) {
    return Await([&] { return ProcessOf(service) == 0; });
  }
  static void Signal(const ScHandle& service, int signal) {
    const DWORD process = ProcessOf(service);
    if (process != 0) ::kill(static_cast<pid_t>(process), signal);
  }
  static void Kill(const ScHandle& service) {
    Signal(service, SIGKILL);
    EXPECT_TRUE(AwaitProcessEnd(service));
  }

  std::filesystem::path ServiceFile(const std::string& fileName) const {
    return machine_.Root() / "root" / "services" / fileName;
  }
  static std::filesystem::path ProgramFile(const std::string& fileName) {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / fileName;
  }

  static inline SERVICE_STATUS lastStatus_{};  // that a control answered
  platform::SimulatedMachine machine_;
  ScHandle manager_{::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS)};

 private:
  std::vector<std::wstring> names_;
};
