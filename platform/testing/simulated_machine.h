// A machine made of data, for tests of programs written to Win32: clock, network interfaces,
// accounts, devices, drivers, locale, registry, event log, message boxes, popup menus, the cursor
// and the notification area are what the test sets and can be read back. It stands in for the real
// one while the object lives; at most one lives at a time. The registry and the service records are
// real ones in an empty root folder of the test's own, and the executable seems to lie in an empty
// folder.
#pragma once

#include <deque>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/account/account_source.h"
#include "platform/device/device_table.h"
#include "platform/dialog/message_box.h"
#include "platform/kernel/locale_source.h"
#include "platform/net/interface_source.h"
#include "platform/service/event_sink.h"
#include "platform/shell/notification_area.h"
#include "platform/testing/simulated_clock.h"
#include "platform/user/menu_tracking.h"

namespace platform {

// A driver's device that records the control codes it gets.
class RecordingDevice final : public Device {
 public:
  DWORD Open(DWORD access) override;
  DWORD Control(DWORD code, std::span<const std::byte> in, std::span<std::byte> out,
                DWORD& returned) override;

  void FailOpenWith(DWORD error) { openError_ = error; }
  void FailControlWith(DWORD error) { controlError_ = error; }
  std::vector<DWORD> Codes() const;
  void ClearCodes();

 private:
  mutable std::mutex mutex_;
  std::vector<DWORD> codes_;
  DWORD openError_ = 0;
  DWORD controlError_ = 0;
};

class SimulatedInterfaces final : public InterfaceSource {
 public:
  void Set(std::vector<NetworkInterface> interfaces);
  // Adds to the counters of the interface of that name.
  void Count(std::wstring_view name, std::uint64_t received, std::uint64_t sent);
  void SetCounters(std::wstring_view name, const InterfaceCounters& counters);

  std::vector<NetworkInterface> List() override;
  std::optional<InterfaceCounters> Counters(std::wstring_view name) override;

 private:
  std::mutex mutex_;
  std::vector<NetworkInterface> interfaces_;
};

// An Ethernet card with a MAC address made from its index.
NetworkInterface SimulatedCard(std::uint32_t index, std::wstring name);

class SimulatedMachine {
 public:
  // Monday 2005-03-14 18:05:09, zone UTC, English (US) with the week from Monday, no interfaces, no
  // accounts, no drivers, no desktop; message boxes answer IDOK, nothing is chosen from menus.
  SimulatedMachine();
  ~SimulatedMachine();
  SimulatedMachine(const SimulatedMachine&) = delete;
  SimulatedMachine& operator=(const SimulatedMachine&) = delete;

  SimulatedClock& Time() { return clock_; }
  SimulatedInterfaces& Interfaces() { return interfaces_; }

  const std::filesystem::path& Root() const { return root_; }
  const std::filesystem::path& ProgramFolder() const { return programFolder_; }

  // Nothing: the accounts cannot be read.
  void SetAccounts(std::optional<std::vector<LocalAccount>> accounts);
  void SetLocale(LANGID language, int firstDayFromMonday);

  // A driver image of that stem whose device has the name `device`.
  std::shared_ptr<RecordingDevice> AddDriver(std::wstring_view imageStem, std::wstring_view device);
  // Drivers come from shared objects too, as on a real machine. Otherwise there are only those that
  // the test adds: no test shall switch the real machine by accident.
  void UseDriverFiles();
  // The system's IP filter driver, as above.
  std::shared_ptr<RecordingDevice> AddIpFilterDriver();

  // Windows are shown from now on, on a screen that nobody sees. Before the first window; only what
  // draws on the desktop needs it. Message boxes and menus are answered as before unless they are
  // shown too. The desktop is left with the machine, and the windows of its thread end.
  void UseDesktop();
  void ShowMessageBoxes();
  void ShowMenus();

  // Answers for the next message boxes, in order; afterwards IDOK.
  void AnswerMessageBoxes(std::deque<int> answers);
  std::vector<MessageBoxRequest> MessageBoxes() const;
  // The commands to choose from the next popup menus, in order; afterwards 0 (nothing is chosen).
  void AnswerMenus(std::deque<UINT> commands);
  std::vector<TrackedMenu> Menus() const;
  // (0, 0) at first; nothing: it cannot be read.
  void SetCursorPosition(std::optional<POINT> place);
  std::vector<LoggedEvent> Events() const;
  // The texts of the events alone.
  std::vector<std::wstring> EventTexts() const;
  std::vector<std::pair<DWORD, NOTIFYICONDATAW>> NotificationChanges() const;

 private:
  void InstallSources();
  void InstallUser();

  std::filesystem::path root_;
  std::filesystem::path programFolder_;
  SimulatedClock clock_;
  SimulatedInterfaces interfaces_;
  std::vector<std::wstring> driverStems_;
  mutable std::mutex mutex_;
  std::deque<int> messageBoxAnswers_;
  std::vector<MessageBoxRequest> messageBoxes_;
  std::deque<UINT> menuAnswers_;
  std::vector<TrackedMenu> menus_;
  std::optional<POINT> cursorPosition_ = POINT{};
  std::vector<LoggedEvent> events_;
  std::vector<std::pair<DWORD, NOTIFYICONDATAW>> notificationChanges_;
};

}  // namespace platform
