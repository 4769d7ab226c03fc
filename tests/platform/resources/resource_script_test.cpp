#include <gmock/gmock.h>

#include "platform/resources/script_fixture.h"

namespace rescomp {
namespace {

class ResourceScript : public ScriptFixture {
 protected:
  ResourceScript() {
    Write("table.bin", "bytes");
    Write("empty.bin", "");
  }
};

// The words at an offset, as a text that ends in a null.
std::u16string TextAt(const Bytes& bytes, std::size_t offset) {
  std::u16string text;
  for (; offset + 1 < bytes.size(); offset += 2) {
    const auto unit = static_cast<char16_t>(bytes[offset] | (bytes[offset + 1] << 8));
    if (unit == 0) break;
    text += unit;
  }
  return text;
}

std::uint16_t WordAt(const Bytes& bytes, std::size_t offset) {
  return static_cast<std::uint16_t>(bytes.at(offset) | (bytes.at(offset + 1) << 8));
}

TEST_F(ResourceScript, FilesBecomeResourcesOfTheLanguageInForce) {
  const auto resources = Compile(
      "LANGUAGE 9, 1\n1 11 \"table.bin\"\nLANGUAGE 0x1d, 0x1\n1 MessageTable \"table.bin\"\n"
      "(2 + 5) & ~1 RCDATA \"table.bin\"\n");
  ASSERT_EQ(resources.size(), 3u);
  EXPECT_EQ(resources[0].type, 11);
  EXPECT_EQ(resources[0].name, 1);
  EXPECT_EQ(resources[0].language, 0x409);
  EXPECT_EQ(std::string(resources[0].data.begin(), resources[0].data.end()), "bytes");
  EXPECT_EQ(resources[1].type, 11);
  EXPECT_EQ(resources[1].language, 0x41D);
  EXPECT_EQ(resources[2].type, 10);
  EXPECT_EQ(resources[2].name, 6);
}

TEST_F(ResourceScript, OnlyThePreprocessorSpeaksInHeaders) {
  const auto resources = Compile(
      "# 1 \"a.rc\"\n# 1 \"defines.h\" 1\nint x();\n# 2 \"a.rc\" 2\n"
      "# 1 \"/usr/include/c++/cstdint\" 1 3\nnamespace std {}\n# 3 \"a.rc\" 2\n"
      "1 10 \"table.bin\"\n");
  EXPECT_EQ(resources.size(), 1u);
}

TEST_F(ResourceScript, VersionInfoIsATreeOfAlignedNodes) {
  const Bytes bytes = Compile(
                          "1 VERSIONINFO FILEVERSION 1,2,3,4 FILEOS 0x40004L\n{\n"
                          "BLOCK \"StringFileInfo\" { BLOCK \"040904B0\" BEGIN\n"
                          "VALUE \"Key\", \"a\"\"\xC3\xA5\\0\"\nEND }\n"
                          "BLOCK \"VarFileInfo\" { VALUE \"Translation\", 0x409, 1200 } }\n")[0]
                          .data;
  EXPECT_EQ(WordAt(bytes, 0), bytes.size());
  EXPECT_EQ(WordAt(bytes, 2), 52);
  EXPECT_EQ(TextAt(bytes, 6), u"VS_VERSION_INFO");
  EXPECT_EQ(WordAt(bytes, 40), 0x04BD);
  EXPECT_EQ(WordAt(bytes, 48), 2);  // the low half of 1.2 comes first
  EXPECT_EQ(WordAt(bytes, 50), 1);

  const std::size_t strings = 92;
  EXPECT_EQ(TextAt(bytes, strings + 6), u"StringFileInfo");
  const std::size_t table = strings + 36;
  EXPECT_EQ(TextAt(bytes, table + 6), u"040904B0");
  const std::size_t value = table + 24;
  EXPECT_EQ(WordAt(bytes, value), 24);     // without padding
  EXPECT_EQ(WordAt(bytes, value + 2), 4);  // characters, with the null
  EXPECT_EQ(WordAt(bytes, value + 4), 1);
  EXPECT_EQ(TextAt(bytes, value + 6), u"Key");
  EXPECT_EQ(TextAt(bytes, value + 16), u"a\"\u00e5");
  const std::size_t variables = strings + WordAt(bytes, strings);
  EXPECT_EQ(TextAt(bytes, variables + 6), u"VarFileInfo");
  const std::size_t translation = variables + 32;
  EXPECT_EQ(WordAt(bytes, translation + 2), 4);  // bytes
  EXPECT_EQ(WordAt(bytes, translation + 4), 0);
  EXPECT_EQ(WordAt(bytes, translation + 32), 0x409);
  EXPECT_EQ(translation + 36, bytes.size());
}

TEST_F(ResourceScript, MistakesAreToldWithFileAndLine) {
  const struct {
    const char* script;
    const char* error;
  } kCases[] = {
      {"# 7 \"a.rc\"\n\n1 11 \"none.bin\"\n", "a.rc:8: there is no file 'none.bin'"},
      {"1 11 \"empty.bin\"\n", "script.i:1: the file 'empty.bin' is empty"},
      {"1 11 \"table.bin\"\n1 11 \"table.bin\"\n", "script.i:2: this resource comes twice"},
      {"1 11 table\n", "a string is expected before 'table'"},
      {"1 ACCELERATORS\n", "resources of type 'ACCELERATORS' are not supported"},
      {"ONE 11 \"table.bin\"\n", "a number is expected before 'ONE'"},
      {"70000 11 \"table.bin\"\n", "the number must fit in 16 bits"},
      {"0x1G 11 \"table.bin\"\n", "'0x1G' is not a 32-bit number"},
      {"1 11 \"table.bin\n", "script.i:1: the string has no end"},
      {"1 11 \"a\\q\"\n", "this escape is not supported"},
      {"LANGUAGE 9\n1", "',' is expected before '1'"},
      {"LANGUAGE 0x400, 1\n", "there is no such language"},
      {"1 VERSIONINFO FILEVERSION 1,2,3,4,5\n{ }", "at most four numbers"},
      {"1 VERSIONINFO COLOUR 1\n", "'COLOUR' is not known in VERSIONINFO"},
      {"1 VERSIONINFO\nBEGIN\nVALUE \"a\", \"b\"\n", "BLOCK, VALUE or END is expected"},
      {"#pragma code_page(1252)\n", "the only code page is 65001"},
      {"1 11 \"\xE5\"\n", "script.i:1: the line is not UTF-8"},
      {"#include \"x.rc\"\n", "was left by the preprocessor"},
  };
  for (const auto& each : kCases)
    ExpectMistake(each.script, each.error);
}

}  // namespace
}  // namespace rescomp
