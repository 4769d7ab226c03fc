// A network namespace without a name: nothing of it is left when the process ends, however it ends.
// The process itself stays where it is; only threads and children made here are inside. Any thread.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

#include "platform/kernel/file_descriptor.h"

namespace lab {

using platform::FileDescriptor;

class NetworkNamespace {
 public:
  // Throws std::system_error when this process may not make one.
  NetworkNamespace();

  // Why this process may not make network namespaces; empty when it may.
  static std::string WhyNot();

  // Runs `work` on a thread inside and waits for it; what it throws is thrown here.
  void Run(const std::function<void()>& work) const;

  // A socket of the namespace, which can be used from anywhere; throws std::system_error.
  FileDescriptor Socket(int family, int type, int protocol = 0) const;

  // What the shell command printed, run inside; throws std::runtime_error with it on failure.
  std::string Shell(const std::string& command) const;

  // A child process inside. It ends with the status that `work` returns.
  pid_t Start(const std::function<int()>& work) const;

  // A path that the ip command takes as a namespace, from this process's children.
  std::string Path() const;

 private:
  void Enter() const;

  FileDescriptor descriptor_;
};

}  // namespace lab
