// The same script through the compiler that the Windows build uses: every resource must come out
// with the same bytes.
#include <gmock/gmock.h>

#include <cstdlib>
#include <iterator>
#include <map>

#include "platform/resources/script_fixture.h"

namespace rescomp {
namespace {

constexpr char kCompiler[] = "x86_64-w64-mingw32-windres";

using Key = std::pair<std::uint16_t, std::uint16_t>;  // type, name
using Resources = std::map<Key, Bytes>;

class WindowsCompiler : public ScriptFixture {
 protected:
  void SetUp() override {
    const std::string trial = std::string("command -v ") + kCompiler + " >/dev/null";
    if (std::system(trial.c_str()) != 0) GTEST_SKIP() << kCompiler << " is not installed";
  }

  Resources Theirs(const std::string& script) const;
  Resources Ours(const std::string& script) const;
};

std::uint32_t NumberAt(const Bytes& bytes, std::size_t offset, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = size; i-- > 0;)
    value = (value << 8) | bytes.at(offset + i);
  return value;
}

// A file of resources is a sequence of headers, each with its data; the first is empty.
Resources ReadResourceFile(const Bytes& file) {
  Resources resources;
  for (std::size_t at = 0; at < file.size();) {
    const std::size_t dataSize = NumberAt(file, at, 4);
    const std::size_t begin = at + NumberAt(file, at + 4, 4);
    const Key key(NumberAt(file, at + 10, 2), NumberAt(file, at + 14, 2));
    const auto first = file.begin() + static_cast<std::ptrdiff_t>(begin);
    if (dataSize != 0) resources[key].assign(first, first + static_cast<std::ptrdiff_t>(dataSize));
    at = (begin + dataSize + 3) & ~std::size_t{3};
  }
  return resources;
}

Resources WindowsCompiler::Theirs(const std::string& script) const {
  Write("script.rc", script);
  const std::string command = "cd '" + folder_.string() + "' && " + kCompiler +
                              " -O res -c 65001 script.rc script.res 2>messages";
  EXPECT_EQ(std::system(command.c_str()), 0);
  std::ifstream file(folder_ / "script.res", std::ios::binary);
  return ReadResourceFile(Bytes(std::istreambuf_iterator<char>(file), {}));
}

Resources WindowsCompiler::Ours(const std::string& script) const {
  Resources resources;
  for (const CompiledResource& each : Compile(script))
    resources[{each.type, each.name}] = each.data;
  return resources;
}

// Two images of four bytes each, which no compiler looks into.
std::string IconFile() {
  const char bytes[] =
      "\0\0\1\0\2\0"
      "\x10\x10\0\0\1\0\x20\0\4\0\0\0\x26\0\0\0"
      "\x20\x20\0\0\1\0\x20\0\4\0\0\0\x2A\0\0\0"
      "abcdefgh";
  return {bytes, sizeof bytes - 1};
}

TEST_F(WindowsCompiler, DialogsIconsAndBitmapsComeOutTheSame) {
  Write("image.ico", IconFile());
  Write("image.bmp", std::string("BM\x12\0\0\0\0\0\0\0\x0E\0\0\0", 14) + "bits");
  const std::string script = R"(LANGUAGE 9, 1
10 ICON "image.ico"
11 ICON "image.ico"
12 BITMAP "image.bmp"
1 24 "image.bmp"
20 DIALOGEX 1, 2, 300, 150, 0x80010000
STYLE 0x80000080 | 0x00080000
EXSTYLE 0x100
CAPTION "Fönster"
FONT 8, "MS Shell Dlg", 400, 0, 1
BEGIN
  LTEXT "a", 1, 1, 2, 3, 4
  CTEXT "ab", 2, 1, 2, 3, 4
  RTEXT "abc", 3, 1, 2, 3, 4, 0x80, 0, 0x807C0003
  LTEXT "", -1, 1, 2, 3, 4, NOT 0x20000
  PUSHBUTTON "OK", 1, 5, -6, 7, 8
  DEFPUSHBUTTON "OK", 1, 5, 6, 7, 8, NOT 0x10000000
  GROUPBOX "&g", 70000, 5, 6, 7, 8, 0, 0, 0x80000000 + 5
  EDITTEXT 4, 1, 2, 3, 4, 0x20 | 0x80
  COMBOBOX 5, 1, 2, 3, 4, 3 | 0x10000
  COMBOBOX 6, 1, 2, 3, 4
  CHECKBOX "x", 7, 1, 2, 3, 4
  AUTOCHECKBOX "x", 8, 1, 2, 3, 4, 0x2000
  RADIOBUTTON "x", 9, 1, 2, 3, 4
  AUTORADIOBUTTON "x", 10, 1, 2, 3, 4, 0x20000
  ICON 10, 11, 1, 2, 0, 0
  CONTROL "", 12, "SYSLISTVIEW32", 1 | 0x00810000, 15, 20, 222, 159, 0x200, 0x80000001
END
21 DIALOGEX 0, 0, 252, 194
STYLE 0x40000000
BEGIN
END
)";
  const Resources theirs = Theirs(script);
  const Resources ours = Ours(script);
  ASSERT_GE(theirs.size(), 6u);
  for (const auto& [key, bytes] : theirs) {
    ASSERT_TRUE(ours.contains(key)) << key.first << ", " << key.second;
    EXPECT_EQ(ours.at(key), bytes) << key.first << ", " << key.second;
  }
  EXPECT_EQ(ours.size(), theirs.size());
}

}  // namespace
}  // namespace rescomp
