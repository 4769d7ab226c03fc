// Screens with more than 96 pixels to the inch, each in a process of its own, since the scale is
// that of the whole desktop. What the other tests say of an ordinary screen must hold there too.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

// Two pixels square are too few to stay as they are.
constexpr const char* kExceptions = "-ScaledScreen*:NoDesktop*:Image.*Pixels*";

TEST(ScaledScreen, DrawingIsThatOfAnOrdinaryScreen) {
  const std::string program = std::filesystem::read_symlink("/proc/self/exe");
  for (const std::string factor : {"1", "1.5", "2"}) {
    const std::string command = "env -u GTEST_OUTPUT QT_SCALE_FACTOR=" + factor + " timeout 60 '" +
                                program + "' --gtest_brief=1 '--gtest_filter=" + kExceptions + "'";
    EXPECT_EQ(std::system(command.c_str()), EXIT_SUCCESS) << factor;
  }
}

}  // namespace
