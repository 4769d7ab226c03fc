// The system tests, or one of the processes that they start from this same executable.
#include <gtest/gtest.h>

#include <string>

#include "system/kill_victim.h"

int main(int argumentCount, char** arguments) {
  if (argumentCount > 1 && std::string(arguments[1]) == quillgate::kVictimWord) {
    return quillgate::RunVictim(argumentCount - 2, arguments + 2);
  }
  testing::InitGoogleTest(&argumentCount, arguments);
  return RUN_ALL_TESTS();
}
