#include <gmock/gmock.h>

#include "platform/resources/script_fixture.h"

namespace rescomp {
namespace {

using ImageScript = ScriptFixture;

std::string Text(const Bytes& bytes) {
  return {bytes.begin(), bytes.end()};
}

// One image of 16 x 16, whose three bytes begin at 22.
std::string IconFile(std::string_view image = "abc", char begin = 22) {
  const char header[] = "\0\0\1\0\1\0\x10\x10\0\0\1\0\x20\0\3\0\0\0";
  return std::string(header, sizeof header - 1) + begin + std::string(3, '\0') + std::string(image);
}

TEST_F(ImageScript, EveryIconsImagesHaveNumbersOfTheirOwn) {
  Write("a.ico", IconFile());
  Write("b.ico", IconFile("xyz"));
  const auto resources = Compile("101 ICON \"a.ico\"\n102 ICON \"b.ico\"\n");
  ASSERT_EQ(resources.size(), 4u);
  EXPECT_EQ(resources[0].type, 3);
  EXPECT_EQ(resources[0].name, 1);
  EXPECT_EQ(Text(resources[0].data), "abc");
  EXPECT_EQ(resources[2].name, 2);
  EXPECT_EQ(Text(resources[2].data), "xyz");
  EXPECT_EQ(resources[3].type, 14);
  EXPECT_EQ(resources[3].name, 102);
  const Bytes group = {0, 0, 1, 0, 1, 0, 16, 16, 0, 0, 1, 0, 32, 0, 3, 0, 0, 0, 2, 0};
  EXPECT_EQ(resources[3].data, group);
}

TEST_F(ImageScript, ABitmapLosesItsFileHeader) {
  Write("a.bmp", "BM............bits");
  const auto resources = Compile("115 BITMAP \"a.bmp\"\n");
  EXPECT_EQ(resources.at(0).type, 2);
  EXPECT_EQ(Text(resources[0].data), "bits");
}

TEST_F(ImageScript, AFileThatIsNotWhatItsStatementSaysIsRefused) {
  const struct {
    std::string bytes;
    const char* script;
    const char* error;
  } kCases[] = {
      {"BM", "1 BITMAP \"file\"", "script.i:1: the file is no bitmap"},
      {IconFile(), "\n1 BITMAP \"file\"", "script.i:2: the file is no bitmap"},
      {"BM............bits", "1 ICON \"file\"", "the file is no icon"},
      {std::string(6, '\0'), "1 ICON \"file\"", "the file is no icon"},
      {IconFile().substr(0, 15), "1 ICON \"file\"", "the file is cut short"},
      {IconFile("ab"), "1 ICON \"file\"", "lies outside of its file"},
      {IconFile("abc", 120), "1 ICON \"file\"", "lies outside of its file"},
  };
  for (const auto& each : kCases) {
    Write("file", each.bytes);
    ExpectMistake(each.script, each.error);
  }
}

}  // namespace
}  // namespace rescomp
