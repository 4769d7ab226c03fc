// What a service's process has from the keeper that starts it. From the layer's own: the service's
// name, its lock, and a channel, on which the process reports that its dispatcher has taken the
// service over. From systemd: the name; the process takes the lock itself and reports to systemd.
// Any thread.
#pragma once

#include <optional>
#include <string>

#include "platform/kernel/file_descriptor.h"

namespace platform {

// The environment variable with the service's name.
inline constexpr const char* kServiceVariable = "WIN_SERVICE";
// The numbers of the inherited descriptors.
inline constexpr int kInheritedChannel = 3;
inline constexpr int kInheritedLock = 4;

struct ServiceChannel {
  std::wstring name;
  FileDescriptor channel;  // closed: systemd has started the process
  FileDescriptor lock;
};

// For the service's process, once: takes ownership of what it has from the keeper, so that its own
// child processes do not inherit it. Nothing when the process was not started by a keeper, or when
// the service runs in another process.
std::optional<ServiceChannel> TakeInheritedChannel();

// For the service's process: reports to the keeper that the service's main thread exists.
void ReportTaken(int channel);

// For the keeper: whether the process has reported within 30 s.
bool AwaitTaken(int channel);

}  // namespace platform
