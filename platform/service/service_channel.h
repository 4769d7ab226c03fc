// What a service's process inherits from the keeper that starts it: its name, its lock, and a
// channel on which it tells that its dispatcher has taken the service over.
#pragma once

#include <optional>
#include <string>

#include "platform/kernel/file_descriptor.h"

namespace platform {

// The variable that tells the process which service it is.
inline constexpr const char* kServiceVariable = "WIN_SERVICE";
// Where the process finds what it inherits.
inline constexpr int kInheritedChannel = 3;
inline constexpr int kInheritedLock = 4;

struct ServiceChannel {
  std::wstring name;
  FileDescriptor channel;
  FileDescriptor lock;
};

// For the service's process, once: takes over what it inherited and hides it from processes that
// it starts. Nothing when the process was not started by a keeper.
std::optional<ServiceChannel> TakeInheritedChannel();

// Tells the keeper that the service's main thread exists.
void ReportTaken(int channel);

// For the keeper: whether the process has reported within 30 s.
bool AwaitTaken(int channel);

}  // namespace platform
