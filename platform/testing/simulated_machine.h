// A machine made of data, for tests of programs written to Win32. The test sets and reads back
// clock, network interfaces, accounts, user sessions, devices, drivers, locale, event log, message
// boxes, popup menus, cursor and notification area. They replace the real machine's while the
// object lives; only one object may live at a time. Registry and service records are real, in an
// empty root folder of the test. The executable's path is reported in an empty folder.
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
#include "platform/testing/simulated_seat.h"
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
  // Monday 2005-03-14 18:05:09, zone UTC, English (US), weeks begin on Monday; no interfaces,
  // accounts, drivers or desktop. Message boxes return IDOK, and no command is chosen from menus.
  SimulatedMachine();
  ~SimulatedMachine();
  SimulatedMachine(const SimulatedMachine&) = delete;
  SimulatedMachine& operator=(const SimulatedMachine&) = delete;

  SimulatedClock& Time() { return clock_; }
  SimulatedInterfaces& Interfaces() { return interfaces_; }
  SimulatedSeat& Seat() { return seat_; }

  const std::filesystem::path& Root() const { return root_; }
  const std::filesystem::path& ProgramFolder() const { return programFolder_; }

  // Without a list the accounts cannot be read.
  void SetAccounts(std::optional<std::vector<LocalAccount>> accounts);
  void SetLocale(LANGID language, int firstDayFromMonday);

  // Adds a driver with an image of that stem, whose device has the name `device`.
  std::shared_ptr<RecordingDevice> AddDriver(std::wstring_view imageStem, std::wstring_view device);
  // Allows drivers from shared objects, as on a real machine. By default only the drivers exist
  // that the test adds, so that a test cannot control the real machine by accident.
  void UseDriverFiles();
  // Adds the system's IP filter driver, as AddDriver does.
  std::shared_ptr<RecordingDevice> AddIpFilterDriver();

  // Keeps services with the systemd on that bus from now on, which reads unit files in that folder.
  void UseSystemd(const std::string& busAddress, const std::filesystem::path& units);

  // Shows windows from now on, on an offscreen desktop. To be called before the first window is
  // created, by tests that need a desktop. Message boxes and menus are still answered without being
  // shown, unless the test calls the two functions below. The destructor destroys the windows of
  // its thread and leaves the desktop.
  void UseDesktop();
  void ShowMessageBoxes();
  void ShowMenus();

  // The results of the next message boxes, in order; afterwards IDOK.
  void AnswerMessageBoxes(std::deque<int> answers);
  std::vector<MessageBoxRequest> MessageBoxes() const;
  // The commands chosen from the next popup menus, in order; afterwards 0 (none).
  void AnswerMenus(std::deque<UINT> commands);
  std::vector<TrackedMenu> Menus() const;
  // (0, 0) by default. Without a position the cursor cannot be read.
  void SetCursorPosition(std::optional<POINT> position);
  std::vector<LoggedEvent> Events() const;
  // Only the texts of the events.
  std::vector<std::wstring> EventTexts() const;
  std::vector<std::pair<DWORD, NOTIFYICONDATAW>> NotificationChanges() const;

 private:
  void InstallSources();
  void InstallUser();

  std::filesystem::path root_;
  std::filesystem::path programFolder_;
  SimulatedClock clock_;
  SimulatedInterfaces interfaces_;
  SimulatedSeat seat_;
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
