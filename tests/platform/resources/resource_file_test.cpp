// Files of compiled resources, put together by hand, and what the reader makes of them.
#include "platform/kernel/resource_file.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kFirst("\0\0\0\0\x20\0\0\0\xFF\xFF\0\0\xFF\xFF\0\0", 16);
const std::string kTail("\0\0\0\0\0\0\x1D\x04\0\0\0\0\0\0\0\0", 16);  // Swedish
const std::string kDialog = std::string("\3\0\0\0\x20\0\0\0\xFF\xFF\5\0\xFF\xFF\x6E\0", 16) + kTail;
const std::string kNamed = std::string("\1\0\0\0\x20\0\0\0A\0\0\0\xFF\xFF\1\0", 16) + kTail;

std::vector<std::string> Read(const std::string& file) {
  std::vector<std::string> found;
  for (const Resource& each : ReadResourceFile(std::as_bytes(std::span(file))))
    found.push_back(std::to_string(each.type) + " " + std::to_string(each.name) + " " +
                    std::to_string(each.language) + " " +
                    std::string(reinterpret_cast<const char*>(each.data.data()), each.data.size()));
  return found;
}

TEST(ResourceFile, NumbersLanguageAndBytesAreThoseOfEachHeader) {
  EXPECT_THAT(Read(kFirst + kTail + kDialog + "abc\1" + kDialog + "def"),
              ElementsAre("5 110 1053 abc", "5 110 1053 def"));
}

TEST(ResourceFile, AResourceWithANameInWordsHidesNoOther) {
  EXPECT_THAT(Read(kNamed + "abcd" + kDialog + "abc\1"), ElementsAre("5 110 1053 abc"));
}

TEST(ResourceFile, ADamagedFileEndsAtTheDamage) {
  EXPECT_THAT(Read(""), IsEmpty());
  EXPECT_THAT(Read("abc"), IsEmpty());
  EXPECT_THAT(Read(kDialog + "ab"), IsEmpty()) << "data cut off";
  EXPECT_THAT(Read(kDialog + "abc\1" + kDialog.substr(0, 20)), ElementsAre("5 110 1053 abc"));
  std::string shortHeader = kDialog + "abc\1";
  shortHeader[4] = 0;
  EXPECT_THAT(Read(shortHeader), IsEmpty()) << "a header of no size";
  std::string longHeader = kDialog + "abc\1";
  longHeader[7] = 1;
  EXPECT_THAT(Read(longHeader), IsEmpty()) << "a header longer than the file";
}

}  // namespace
}  // namespace platform
