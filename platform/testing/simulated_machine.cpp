#include "platform/testing/simulated_machine.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "platform/device/driver_host.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/modules.h"
#include "platform/service/service_keeper.h"
#include "platform/user/cursor_source.h"
#include "platform/user/desktop.h"
#include "platform/user/window.h"

namespace platform {
namespace {

std::filesystem::path MakeTemporaryFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "simulated-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  return pattern;
}

// The device exists while its driver is loaded.
class SimulatedDriver final : public LoadedDriver {
 public:
  SimulatedDriver(std::wstring name, std::shared_ptr<Device> device) : name_(std::move(name)) {
    RegisterDevice(name_, std::move(device));
  }
  ~SimulatedDriver() override { UnregisterDevice(name_); }
  SimulatedDriver(const SimulatedDriver&) = delete;
  SimulatedDriver& operator=(const SimulatedDriver&) = delete;

 private:
  std::wstring name_;
};

}  // namespace

DWORD RecordingDevice::Open(DWORD) {
  return openError_;
}

DWORD RecordingDevice::Control(DWORD code, std::span<const std::byte>, std::span<std::byte>,
                               DWORD& returned) {
  const std::lock_guard lock(mutex_);
  codes_.push_back(code);
  returned = 0;
  return controlError_;
}

std::vector<DWORD> RecordingDevice::Codes() const {
  const std::lock_guard lock(mutex_);
  return codes_;
}

void RecordingDevice::ClearCodes() {
  const std::lock_guard lock(mutex_);
  codes_.clear();
}

void SimulatedInterfaces::Set(std::vector<NetworkInterface> interfaces) {
  const std::lock_guard lock(mutex_);
  interfaces_ = std::move(interfaces);
}

void SimulatedInterfaces::Count(std::wstring_view name, std::uint64_t received,
                                std::uint64_t sent) {
  const std::lock_guard lock(mutex_);
  for (NetworkInterface& each : interfaces_) {
    if (each.name != name) continue;
    each.counters.bytesReceived += received;
    each.counters.bytesSent += sent;
  }
}

void SimulatedInterfaces::SetCounters(std::wstring_view name, const InterfaceCounters& counters) {
  const std::lock_guard lock(mutex_);
  for (NetworkInterface& each : interfaces_) {
    if (each.name == name) each.counters = counters;
  }
}

std::vector<NetworkInterface> SimulatedInterfaces::List() {
  const std::lock_guard lock(mutex_);
  return interfaces_;
}

std::optional<InterfaceCounters> SimulatedInterfaces::Counters(std::wstring_view name) {
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find(interfaces_, name, &NetworkInterface::name);
  if (found == interfaces_.end()) return std::nullopt;
  return found->counters;
}

NetworkInterface SimulatedCard(std::uint32_t index, std::wstring name) {
  NetworkInterface card;
  card.index = index;
  card.description = L"Simulated card " + std::to_wstring(index);
  card.name = std::move(name);
  card.physicalAddress = {0x02, 0x00, 0x5E, 0x10, 0x00, static_cast<BYTE>(index)};
  card.up = true;
  return card;
}

SimulatedMachine::SimulatedMachine() : root_(MakeTemporaryFolder()) {
  programFolder_ = root_ / "program";
  std::filesystem::create_directory(programFolder_);
  ::setenv("WIN_ROOT", (root_ / "root").c_str(), 1);
  ::setenv("TZ", "UTC", 1);
  for (const char* desktop : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
    ::unsetenv(desktop);
  ::tzset();
  clock_.SetLocalTime(2005, 3, 14, 18, 5, 9);
  SetModuleFileName(programFolder_ / "program");
  InstallSources();
}

void SimulatedMachine::InstallSources() {
  SetClock(&clock_);
  AllowDriverFiles(false);
  SetInterfaceSource(&interfaces_);
  SetAccounts(std::vector<LocalAccount>{});
  SetSessionWatchSource(
      [this](SessionObserver& observer, SleepNotice) { return seat_.Watch(observer); });
  SetLocale(MAKELANGID(LANG_ENGLISH, SUBLANG_DEFAULT), 0);
  InstallUser();
  SetEventSink([this](const LoggedEvent& event) {
    const std::lock_guard lock(mutex_);
    events_.push_back(event);
  });
  SetNotificationObserver([this](DWORD message, const NOTIFYICONDATAW& data) {
    const std::lock_guard lock(mutex_);
    notificationChanges_.emplace_back(message, data);
  });
}

// Installs what stands in for the user: results of message boxes and menus, and the cursor.
void SimulatedMachine::InstallUser() {
  SetMessageBoxResponder([this](const MessageBoxRequest& request) {
    const std::lock_guard lock(mutex_);
    messageBoxes_.push_back(request);
    if (messageBoxAnswers_.empty()) return IDOK;
    const int answer = messageBoxAnswers_.front();
    messageBoxAnswers_.pop_front();
    return answer;
  });
  SetMenuTracker([this](const TrackedMenu& menu) {
    const std::lock_guard lock(mutex_);
    menus_.push_back(menu);
    if (menuAnswers_.empty()) return 0u;
    const UINT answer = menuAnswers_.front();
    menuAnswers_.pop_front();
    return answer;
  });
  SetCursorSource([this] {
    const std::lock_guard lock(mutex_);
    return cursorPosition_;
  });
}

SimulatedMachine::~SimulatedMachine() {
  if (IsWindowThread()) {
    ForgetWindowsOf(*CurrentQueue());
    LeaveDesktop(*CurrentQueue());
  }
  for (const std::wstring& stem : driverStems_)
    UnregisterBuiltInDriver(stem);
  AllowDriverFiles(true);
  SetSystemdPlace(std::nullopt);
  ClearNotificationArea();
  SetNotificationObserver({});
  SetEventSink({});
  SetCursorSource({});
  SetMenuTracker({});
  SetMessageBoxResponder({});
  SetLocaleChoice(std::nullopt);
  SetSessionWatchSource({});
  SetAccountSource({});
  SetDeviceResolver({});
  SetInterfaceSource(nullptr);
  SetClock(nullptr);
  SetModuleFileName({});
  std::error_code error;
  std::filesystem::remove_all(root_, error);
}

void SimulatedMachine::UseSystemd(const std::string& busAddress,
                                  const std::filesystem::path& units) {
  SetSystemdPlace(SystemdPlace{busAddress, units, root_});
}

void SimulatedMachine::SetAccounts(std::optional<std::vector<LocalAccount>> accounts) {
  SetAccountSource([accounts = std::move(accounts)] { return accounts; });
}

void SimulatedMachine::SetLocale(LANGID language, int firstDayFromMonday) {
  SetLocaleChoice(LocaleChoice{language, firstDayFromMonday});
}

std::shared_ptr<RecordingDevice> SimulatedMachine::AddDriver(std::wstring_view imageStem,
                                                             std::wstring_view device) {
  auto recorder = std::make_shared<RecordingDevice>();
  RegisterBuiltInDriver(imageStem, [recorder, name = std::wstring(device)](DWORD& error) {
    error = NO_ERROR;
    return std::make_unique<SimulatedDriver>(name, recorder);
  });
  driverStems_.emplace_back(imageStem);
  return recorder;
}

void SimulatedMachine::UseDriverFiles() {
  AllowDriverFiles(true);
}

std::shared_ptr<RecordingDevice> SimulatedMachine::AddIpFilterDriver() {
  return AddDriver(L"IpFltDrv", L"IpFilterDriver");
}

void SimulatedMachine::UseDesktop() {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
}

void SimulatedMachine::ShowMessageBoxes() {
  SetMessageBoxResponder({});
}

void SimulatedMachine::ShowMenus() {
  SetMenuTracker({});
}

void SimulatedMachine::AnswerMessageBoxes(std::deque<int> answers) {
  const std::lock_guard lock(mutex_);
  messageBoxAnswers_ = std::move(answers);
}

std::vector<MessageBoxRequest> SimulatedMachine::MessageBoxes() const {
  const std::lock_guard lock(mutex_);
  return messageBoxes_;
}

void SimulatedMachine::AnswerMenus(std::deque<UINT> commands) {
  const std::lock_guard lock(mutex_);
  menuAnswers_ = std::move(commands);
}

std::vector<TrackedMenu> SimulatedMachine::Menus() const {
  const std::lock_guard lock(mutex_);
  return menus_;
}

void SimulatedMachine::SetCursorPosition(std::optional<POINT> position) {
  const std::lock_guard lock(mutex_);
  cursorPosition_ = position;
}

std::vector<LoggedEvent> SimulatedMachine::Events() const {
  const std::lock_guard lock(mutex_);
  return events_;
}

std::vector<std::wstring> SimulatedMachine::EventTexts() const {
  std::vector<std::wstring> texts;
  for (const LoggedEvent& event : Events())
    texts.push_back(event.text);
  return texts;
}

std::vector<std::pair<DWORD, NOTIFYICONDATAW>> SimulatedMachine::NotificationChanges() const {
  const std::lock_guard lock(mutex_);
  return notificationChanges_;
}

}  // namespace platform
