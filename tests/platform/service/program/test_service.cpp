// A service for the tests. The first word after the program's path tells how it behaves; what it
// sees, it tells in its status: the last control as wait hint, 1 as check point when it started in
// the system's folder, the number of its arguments as service-specific exit code.
#include <windows.h>
#include <winsvc.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>

namespace {

std::wstring mode;
std::mutex mutex;
std::atomic<bool> stopping = false;
SERVICE_STATUS_HANDLE statusHandle = nullptr;
SERVICE_STATUS status{};

// The main function and the handler report from threads of their own.
void Report(DWORD state) {
  const std::lock_guard lock(mutex);
  status.dwCurrentState = state;
  ::SetServiceStatus(statusHandle, &status);
}

void WINAPI HandleControl(DWORD control) {
  if (mode == L"throwing" && control == 200) throw 1;
  const std::lock_guard lock(mutex);
  if (mode == L"failing") {
    status.dwWin32ExitCode = ERROR_GEN_FAILURE;
    stopping = true;
    stopping.notify_all();
  } else if (control == SERVICE_CONTROL_STOP) {
    status.dwCurrentState = SERVICE_STOP_PENDING;
    stopping = true;
    stopping.notify_all();
  } else {
    status.dwWaitHint = control;
  }
  ::SetServiceStatus(statusHandle, &status);
}

void WINAPI ServiceMain(DWORD argumentCount, LPWSTR* arguments) {
  if (mode == L"deserter") return;
  if (mode == L"faulty") throw 1;
  statusHandle = ::RegisterServiceCtrlHandlerW(arguments[0], HandleControl);
  status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
  status.dwControlsAccepted = mode == L"deaf" ? 0 : SERVICE_ACCEPT_STOP;
  status.dwCheckPoint = std::filesystem::current_path().filename() == "System32" ? 1 : 0;
  status.dwServiceSpecificExitCode = argumentCount;
  Report(SERVICE_START_PENDING);
  if (mode == L"dawdler") std::this_thread::sleep_for(std::chrono::milliseconds(500));
  if (mode != L"pending") Report(SERVICE_RUNNING);
  if (mode == L"living") Report(SERVICE_RUNNING);
  stopping.wait(false);
  Report(SERVICE_STOPPED);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR arguments, int) {
  mode = arguments;
  if (mode == L"dead") return 1;
  std::wstring name = L"any";
  const SERVICE_TABLE_ENTRYW table[] = {{name.data(), ServiceMain}, {nullptr, nullptr}};
  const bool dispatched = ::StartServiceCtrlDispatcherW(table);
  // A process that takes its time to end after its service has stopped.
  if (mode == L"lingering") std::this_thread::sleep_for(std::chrono::milliseconds(700));
  return dispatched ? 0 : static_cast<int>(::GetLastError() == 1063 ? 63 : 1);
}
