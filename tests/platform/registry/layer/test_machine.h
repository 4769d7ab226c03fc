// The machine of the running test. Each test of this program has one of its own, so that those that
// know nothing of it find an empty registry too.
#pragma once

#include <gtest/gtest.h>

#include <optional>

#include "platform/testing/simulated_machine.h"

class TestMachine final : public testing::EmptyTestEventListener {
 public:
  TestMachine() { testing::UnitTest::GetInstance()->listeners().Append(this); }

  static platform::SimulatedMachine& Get() { return *machine_; }

  void OnTestStart(const testing::TestInfo&) override { machine_.emplace(); }
  void OnTestEnd(const testing::TestInfo&) override { machine_.reset(); }

 private:
  static inline std::optional<platform::SimulatedMachine> machine_;
};

// The framework owns its listeners.
inline const auto* const installedMachine = new TestMachine;
