#include "lab/network_namespace.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/stat.h>

#include <cstdio>
#include <future>

#include "lab/socket_address.h"

namespace lab {

namespace {

constexpr const char* kOwnNamespace = "/proc/thread-self/ns/net";

ino_t NumberOf(const char* file) {
  struct stat status {};
  if (::stat(file, &status) != 0) ThrowError(file);
  return status.st_ino;
}

void RunOnThread(const std::function<void()>& work) {
  std::async(std::launch::async, work).get();
}

}  // namespace

NetworkNamespace::NetworkNamespace() {
  RunOnThread([this] {
    if (::unshare(CLONE_NEWNET) != 0) ThrowError("unshare");
    descriptor_ = FileDescriptor(::open(kOwnNamespace, O_RDONLY | O_CLOEXEC));
    if (!descriptor_.IsOpen()) ThrowError(kOwnNamespace);
  });
}

std::string NetworkNamespace::WhyNot() {
  try {
    NetworkNamespace().Shell("command -v ip nft && ip link set lo up && nft list ruleset");
    return {};
  } catch (const std::exception& failure) {
    return std::string("no network namespace to test in (root, or unshare -Ur?): ") +
           failure.what();
  }
}

void NetworkNamespace::Enter() const {
  const ino_t outside = NumberOf("/proc/self/ns/net");
  if (::setns(descriptor_.Get(), CLONE_NEWNET) != 0) ThrowError("setns");
  // Whatever follows would otherwise change the machine's own network.
  if (NumberOf(kOwnNamespace) == outside) throw std::logic_error("still in the first namespace");
}

void NetworkNamespace::Run(const std::function<void()>& work) const {
  RunOnThread([&] {
    Enter();
    work();
  });
}

FileDescriptor NetworkNamespace::Socket(int family, int type, int protocol) const {
  FileDescriptor socket;
  Run([&] { socket = FileDescriptor(::socket(family, type | SOCK_CLOEXEC, protocol)); });
  if (!socket.IsOpen()) ThrowError("socket");
  return socket;
}

std::string NetworkNamespace::Shell(const std::string& command) const {
  std::string output;
  int status = -1;
  Run([&] {
    FILE* const pipe = ::popen(("{ " + command + "\n} 2>&1").c_str(), "r");
    if (pipe == nullptr) ThrowError("popen");
    char buffer[512];
    while (std::fgets(buffer, sizeof buffer, pipe) != nullptr)
      output += buffer;
    status = ::pclose(pipe);
  });
  if (status != 0) throw std::runtime_error(command + ": " + output);
  return output;
}

pid_t NetworkNamespace::Start(const std::function<int()>& work) const {
  const pid_t process = ::fork();
  if (process < 0) ThrowError("fork");
  if (process > 0) return process;
  int status = 1;
  try {
    Enter();
    status = work();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
  }
  ::_exit(status);
}

std::string NetworkNamespace::Path() const {
  return "/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(descriptor_.Get());
}

}  // namespace lab
