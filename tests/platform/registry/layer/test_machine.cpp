#include "platform/registry/layer/test_machine.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

std::optional<platform::SimulatedMachine> machine;

class MachineOfEachTest final : public testing::EmptyTestEventListener {
 public:
  MachineOfEachTest() { testing::UnitTest::GetInstance()->listeners().Append(this); }
  void OnTestStart(const testing::TestInfo&) override { machine.emplace(); }
  void OnTestEnd(const testing::TestInfo&) override { machine.reset(); }
};

// The framework owns its listeners.
[[maybe_unused]] const auto* const listener = new MachineOfEachTest;

}  // namespace

platform::SimulatedMachine& TestMachine() {
  return *machine;
}
