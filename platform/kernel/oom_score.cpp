#include "platform/kernel/oom_score.h"

#include <fcntl.h>

#include <string>

#include "platform/kernel/file_descriptor.h"

namespace platform {
namespace {

constexpr int kExempt = -1000;
constexpr int kStep = 100;

bool Write(const std::string& process, int score) {
  const std::string path = "/proc/" + process + "/oom_score_adj";
  const FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
  const std::string text = std::to_string(score);
  return file.IsOpen() &&
         ::write(file.Get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

}  // namespace

void SpareFromOomKiller() {
  // Without CAP_SYS_RESOURCE a process cannot go below the lowest score that a process with that
  // capability has set.
  for (int score = kExempt; score <= 0; score += kStep) {
    if (Write("self", score)) return;
  }
}

void ExposeToOomKiller(pid_t process) {
  Write(std::to_string(process), 0);
}

}  // namespace platform
