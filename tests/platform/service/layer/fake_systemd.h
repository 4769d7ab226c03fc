// A systemd of the test's own, on a bus of its own: it answers the manager's calls, starts the
// process of a unit as its file says and hears what the process tells. Before each start somebody
// else on the bus says that it has failed. One process at a time. Runs on a thread of its own until
// it is destroyed.
#pragma once

#include <systemd/sd-bus.h>

#include <atomic>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

class FakeSystemd {
 public:
  static bool IsAvailable();  // whether there is a program for the bus

  // The folder is for sockets and, below it in "units", unit files.
  explicit FakeSystemd(const std::filesystem::path& folder);
  ~FakeSystemd();
  FakeSystemd(const FakeSystemd&) = delete;
  FakeSystemd& operator=(const FakeSystemd&) = delete;

  std::string Address() const { return "unix:path=" + (folder_ / "bus").string(); }
  std::filesystem::path Units() const { return folder_ / "units"; }

  // What was called since this was last asked, but for questions: "Reload", "StartUnit NAME".
  std::vector<std::string> TakeCalls();
  // Everything that its processes have told.
  std::vector<std::string> Notices();
  // What every unit's state and substate are.
  void SetState(const std::string& active, const std::string& sub);

 private:
  void StartBus();
  void Connect();
  void Run();
  int Answer(sd_bus_message* call);
  int AnswerUnitFile(sd_bus_message* call, const std::string& unit);
  int StartUnit(sd_bus_message* call, const std::string& unit);
  void ReadNotices();
  void NoteExit();
  void EndJob(const char* result);

  const std::filesystem::path folder_;
  int notices_ = -1;
  pid_t daemon_ = -1;
  pid_t process_ = -1;
  bool jobRuns_ = false;
  sd_bus* bus_ = nullptr;
  std::atomic<bool> ending_ = false;
  std::mutex mutex_;  // guards what the test reads and sets
  std::vector<std::string> calls_;
  std::vector<std::string> heard_;
  std::string active_ = "inactive";
  std::string sub_ = "dead";
  std::thread thread_;
};
