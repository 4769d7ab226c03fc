#include "platform/service/service_fixture.h"

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

template <class Condition>
bool Await(Condition condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

std::wstring Backslashes(const std::filesystem::path& path) {
  std::wstring text = path.wstring();
  std::ranges::replace(text, L'/', L'\\');
  return text;
}

}  // namespace

ServiceFixture::~ServiceFixture() {
  for (const std::wstring& name : names_) {
    const ScHandle service(::OpenServiceW(manager_.Get(), name.c_str(), SERVICE_ALL_ACCESS));
    if (service.Get() != nullptr && ProcessOf(service) != ::GetCurrentProcessId()) Kill(service);
  }
}

ScHandle ServiceFixture::CreateTestService(const std::wstring& name, const std::wstring& mode) {
  const std::wstring image = Backslashes(ProgramFile("platform_test_service")) + L" " + mode;
  names_.push_back(name);
  return ScHandle(::CreateServiceW(manager_.Get(), name.c_str(), nullptr, SERVICE_ALL_ACCESS,
                                   SERVICE_WIN32_OWN_PROCESS, SERVICE_DEMAND_START,
                                   SERVICE_ERROR_NORMAL, image.c_str(), nullptr, nullptr, nullptr,
                                   nullptr, nullptr));
}

ScHandle ServiceFixture::CreateDriver(const std::wstring& name, const std::wstring& image) {
  return ScHandle(::CreateServiceW(manager_.Get(), name.c_str(), nullptr, SERVICE_ALL_ACCESS,
                                   SERVICE_KERNEL_DRIVER, SERVICE_SYSTEM_START,
                                   SERVICE_ERROR_NORMAL, image.c_str(), nullptr, nullptr, nullptr,
                                   nullptr, nullptr));
}

ScHandle ServiceFixture::Open(const std::wstring& name, DWORD access) {
  return ScHandle(::OpenServiceW(manager_.Get(), name.c_str(), access));
}

DWORD ServiceFixture::OpenError(const std::wstring& name) {
  return Open(name).Get() == nullptr ? ::GetLastError() : NO_ERROR;
}

SERVICE_STATUS ServiceFixture::StatusOf(const ScHandle& service) {
  SERVICE_STATUS status{};
  EXPECT_TRUE(::QueryServiceStatus(service.Get(), &status)) << ::GetLastError();
  return status;
}

DWORD ServiceFixture::ProcessOf(const ScHandle& service) {
  SERVICE_STATUS_PROCESS status{};
  DWORD needed = 0;
  EXPECT_TRUE(::QueryServiceStatusEx(service.Get(), SC_STATUS_PROCESS_INFO,
                                     reinterpret_cast<LPBYTE>(&status), sizeof status, &needed));
  return status.dwProcessId;
}

bool ServiceFixture::AwaitState(const ScHandle& service, DWORD state) {
  return Await([&] { return StateOf(service) == state; });
}

bool ServiceFixture::AwaitProcessEnd(const ScHandle& service) {
  return Await([&] { return ProcessOf(service) == 0; });
}

void ServiceFixture::Kill(const ScHandle& service) {
  const DWORD process = ProcessOf(service);
  if (process == 0) return;
  ::kill(static_cast<pid_t>(process), SIGKILL);
  EXPECT_TRUE(AwaitProcessEnd(service));
}

std::filesystem::path ServiceFixture::ServiceFile(const std::string& fileName) const {
  return machine_.Root() / "root" / "services" / fileName;
}

std::filesystem::path ServiceFixture::ProgramFile(const std::string& fileName) {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path() / fileName;
}
