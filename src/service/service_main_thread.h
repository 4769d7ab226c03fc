// The work of the service between "running" and "stopped": begins the session, starts the monitor,
// runs the setup wizard if this is the first start, creates the desktop objects and the hidden
// window, runs the message loop, and takes everything down in order. Runs on the service main
// thread.
#pragma once

#include "service/process_objects.h"

namespace quillgate {

class ServiceModule;

class ServiceMainThread {
 public:
  ServiceMainThread(ServiceModule& module, ProcessObjects& objects)
      : module_(module), objects_(objects) {}

  // Returns when a stop has been requested. Throws std::runtime_error when the window or the
  // monitor cannot be created; everything has been taken down then too.
  void Run();

 private:
  void ApplyFirstDayOfWeek();
  void RunMessageLoop();
  void TakeDown();

  ServiceModule& module_;
  ProcessObjects& objects_;
};

}  // namespace quillgate
