// logind made of data, on a bus of the test's own, which the test and what it starts take for the
// system's. Its signals say that something has changed, or that the machine sleeps. One at a time;
// any thread.
#pragma once

#include <systemd/sd-bus.h>

#include <atomic>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <thread>

#include "platform/kernel/file_descriptor.h"
#include "platform/kernel/linux_bus.h"

namespace logind {

struct Session {
  std::string user;
  std::string sessionClass = "user";
  std::string seat = "seat0";
  std::string state = "online";
  bool locked = false;
  pid_t leader = 0;
};

class FakeLogind {
 public:
  // Empty, or why there can be no bus here.
  static std::string WhyNot();

  FakeLogind();
  ~FakeLogind();
  FakeLogind(const FakeLogind&) = delete;
  FakeLogind& operator=(const FakeLogind&) = delete;

  // A new session, or another state of one; and which is on the screen of seat0 (empty: none).
  void Put(const std::string& id, const Session& session, const std::string& active);
  void Remove(const std::string& id);
  // A new process of logind, with the same sessions.
  void Restart();
  void SignalSleep(bool begins);
  // The same from another connection, to whoever delays sleep; delivered when this returns.
  void ForgeSleep(bool begins);
  // Waits until somebody delays sleep, or nobody, 10 s at most; false when that did not happen.
  bool AwaitDelay(bool isDelayed);

 private:
  static int OnMessage(sd_bus_message* message, void* self, sd_bus_error* error);
  void StartBus();
  void Open();
  void Serve();
  int AnswerProperty(sd_bus_message* message);
  int AppendSeat(sd_bus_message* reply, const std::string& name);
  int AppendSession(sd_bus_message* reply, const std::string& path, const std::string& name);
  int Inhibit(sd_bus_message* message);
  void SignalManager(const char* member, const char* types, int argument);

  std::filesystem::path folder_;
  pid_t daemon_ = 0;
  std::mutex mutex_;  // guards the rest, the connection too
  platform::BusConnection bus_;
  std::map<std::string, Session> sessions_;
  std::string active_;
  platform::FileDescriptor delay_;  // readable once its other end is closed
  std::string delayer_;             // its owner's name on the bus
  std::atomic<bool> ended_ = false;
  std::thread thread_;
};

}  // namespace logind
