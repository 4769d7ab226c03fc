// The machine of the running test. Each test of this program has one of its own, so that those that
// know nothing of it find an empty registry too.
#pragma once

#include "platform/testing/simulated_machine.h"

platform::SimulatedMachine& TestMachine();
