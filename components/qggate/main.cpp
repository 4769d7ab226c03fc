// qggate, the command that works the packet gate where the service does not: closes it before the
// network comes up, and opens it by hand when the service is gone.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "boot_option.h"
#include "packet_gate.h"

namespace {

using quillgate::gate::BootOption;
using quillgate::gate::GateState;
using quillgate::gate::PacketGate;

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kBadUsage = 2;
constexpr int kIsClosed = 3;  // of status

constexpr const char* kUsage =
    "usage: qggate close        close the Internet connection until Quillgate has judged a user\n"
    "       qggate open         open it by hand, when the service of Quillgate does not run\n"
    "       qggate status       show its state; exit status 3 when it is closed\n"
    "       qggate boot closed  from now on it is closed from the start of the system, and closes\n"
    "                           within a minute when the service has died and does not come back\n"
    "       qggate boot open    no longer so\n";

// A service that runs puts a change of its gate back within 100 ms.
constexpr std::chrono::milliseconds kServiceReaction{300};

void PrintError(const std::string& line) {
  std::fprintf(stderr, "qggate: %s\n", line.c_str());
}

BootOption Option() {
  const char* chosen = std::getenv("WIN_ROOT");
  return BootOption(chosen != nullptr && *chosen != '\0' ? chosen : QG_ROOT_FOLDER);
}

std::string ThisProgram() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

const char* Text(GateState state) {
  return state == GateState::kOpen      ? "open"
         : state == GateState::kOnLease ? "open while the service renews it"
                                        : "closed";
}

// A gate that has rules stays as it is: it is the service's, or will be.
int Close(PacketGate& gate) {
  GateState state{};
  if (gate.ReadState(state) != 0) return kFailed;
  if (state == GateState::kOpen && gate.Block() != 0) return kFailed;
  if (state == GateState::kOnLease) {
    std::puts("The Internet connection is open; it closes when the service does not renew it.");
  } else {
    std::printf(
        "The Internet connection is closed until Quillgate has judged a user. If its service does "
        "not start, this opens it: %s open\n",
        ThisProgram().c_str());
  }
  return kDone;
}

int Open(PacketGate& gate) {
  const bool isDone = gate.Pass() == 0;
  std::this_thread::sleep_for(kServiceReaction);
  GateState state{};
  if (isDone && gate.ReadState(state) == 0 && state != GateState::kClosed) {
    std::printf("The Internet connection is %s.\n", Text(state));
    return kDone;
  }
  PrintError("not open: a service that runs keeps its gate. Stop it first, which opens it, too.");
  return kFailed;
}

int ShowState(PacketGate& gate) {
  GateState state{};
  if (gate.ReadState(state) != 0) return kFailed;
  const bool isOptionOn = Option().Lease().count() != 0;
  std::printf("gate: %s\nboot: %s\n", Text(state), isOptionOn ? "closed" : "open");
  return state == GateState::kClosed ? kIsClosed : kDone;
}

int SwitchOption(bool closed) {
  if (Option().Switch(closed)) return kDone;
  PrintError("the option cannot be stored: is Quillgate installed, and are you root?");
  return kFailed;
}

int Run(const std::vector<std::string_view>& words) {
  using Words = std::vector<std::string_view>;
  if (words == Words{"boot", "closed"}) return SwitchOption(true);
  if (words == Words{"boot", "open"}) return SwitchOption(false);
  const auto operation = words == Words{"close"}    ? Close
                         : words == Words{"open"}   ? Open
                         : words == Words{"status"} ? ShowState
                                                    : nullptr;
  if (operation == nullptr) {
    std::fputs(kUsage, stderr);
    return kBadUsage;
  }
  const auto report = [](const std::string&) {};  // what is reported is logged as well
  PacketGate gate(PrintError, report, [] { return std::chrono::milliseconds(0); });
  return gate.Open() == 0 ? operation(gate) : kFailed;
}

}  // namespace

int main(int count, char** words) {
  try {
    return Run({words + 1, words + count});
  } catch (const std::exception& failure) {
    PrintError(failure.what());
    return kFailed;
  }
}
