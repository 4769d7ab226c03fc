#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <tuple>

#include "platform/registry/layer/test_machine.h"
#include "platform/registry/registry_key.h"

namespace {

constexpr auto kCorrupt = static_cast<LSTATUS>(ERROR_REGISTRY_CORRUPT);

// The hive as a file, which the test damages.
class HiveTest : public ::testing::Test {
 protected:
  HiveTest() { std::filesystem::create_directories(folder_); }
  std::string Content() const {
    std::ifstream file(file_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void Put(std::string_view text) const {
    std::ofstream(file_, std::ios::binary | std::ios::trunc) << text;
  }

  static LSTATUS Create(const wchar_t* path) { return Key(path).Status(); }
  static LSTATUS SetNumber(const wchar_t* name, DWORD number) {
    return Key(L"Top", KEY_WRITE).Set(name, REG_DWORD, &number, sizeof number);
  }
  void ExpectCorruptAndNotOverwritten(const std::string& text) const {
    Put(text);
    EXPECT_EQ(OpenStatus(L"Top"), kCorrupt) << text.substr(0, 100);
    EXPECT_EQ(Create(L"Other"), kCorrupt) << text.substr(0, 100);
    EXPECT_EQ(Content(), text);
  }

  const std::filesystem::path folder_ = TestMachine::Get().Root() / "root" / "registry";
  const std::filesystem::path file_ = folder_ / "machine.hive";
};

TEST_F(HiveTest, ValuesOfEveryTypeComeBackByteForByte) {
  using namespace std::string_literals;
  const auto bytes = [](const std::wstring& text) {
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
  };
  const std::tuple<const wchar_t*, DWORD, std::string> cases[] = {
      {L"text", REG_SZ, bytes(L"C:\\a \"b\"\r\n\x01\u00e5\U0001F600]=\0"s)},
      {L"no terminator", REG_SZ, bytes(L"abc")},
      {L"inner zero", REG_SZ, bytes(L"a\0b\0"s)},
      {L"no character", REG_SZ, bytes({static_cast<wchar_t>(0xD800), L'\0'})},
      {L"beyond Unicode", REG_SZ, bytes({static_cast<wchar_t>(0x110000), L'\0'})},
      {L"odd size", REG_SZ, "abc"},
      {L"nothing", REG_SZ, ""},
      {L"path", REG_EXPAND_SZ, bytes(L"%SystemRoot%\\x\0"s)},
      {L"list", REG_MULTI_SZ, bytes(L"a\0b\0\0"s)},
      {L"number", REG_DWORD, "\x78\x56\x34\x12"},
      {L"short number", REG_DWORD, "ab"},
      {L"bytes", REG_BINARY, "\0\xFF\n\""s},
      {L"", REG_SZ, bytes(L"default\0"s)},
      {L"na\\me \"x\"\n=@", REG_NONE, ""},
      {L"@", REG_DWORD, "\1\0\0\0"s},
  };
  const Key key(L"Top");
  for (const auto& [name, type, data] : cases)
    ASSERT_EQ(key.Set(name, type, data.empty() ? nullptr : data.data(), data.size()), 0);
  // A change makes it read the whole hive again, not remember what it wrote.
  ASSERT_EQ(::utimensat(AT_FDCWD, file_.c_str(), nullptr, 0), 0);
  for (const auto& [name, type, data] : cases) {
    DWORD storedType = 99;
    BYTE stored[256] = {};
    DWORD size = sizeof stored;
    EXPECT_EQ(::RegQueryValueExW(key.Get(), name, nullptr, &storedType, stored, &size), 0);
    EXPECT_EQ(storedType, type) << data;
    EXPECT_EQ(std::string(stored, stored + size), data);
  }
}

TEST_F(HiveTest, AVolatileKeyIsNotStoredAsALastingOne) {
  HKEY key = nullptr;
  constexpr DWORD kVolatile = 1;
  EXPECT_EQ(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Top", 0, nullptr, kVolatile, KEY_READ, nullptr,
                              &key, nullptr),
            static_cast<LSTATUS>(ERROR_INVALID_PARAMETER));
  EXPECT_EQ(Content(), "");
}

TEST_F(HiveTest, IsTextThatAPersonCanReadAndWrite) {
  Put("registry 1\n[Top]\n\"Number\"=dword:0000002a\n[Top\\Sub]\n@=\"text\"\nend 4\n");
  EXPECT_EQ(Key(L"Top", KEY_READ).Number(L"number"), 42u);
  EXPECT_EQ(SetNumber(L"More", 1), 0);
  EXPECT_EQ(Content(),
            "registry 1\n[Top]\n\"Number\"=dword:0000002a\n\"More\"=dword:00000001\n"
            "[Top\\Sub]\n@=\"text\"\nend 5\n");
}

TEST_F(HiveTest, CutOffAnywhereItIsCorruptAndNotOverwritten) {
  ASSERT_EQ(Create(L"Top\\Sub"), 0);
  ASSERT_EQ(SetNumber(L"Number", 7), 0);
  const std::string whole = Content();
  for (std::size_t length = 0; length < whole.size(); ++length)
    ExpectCorruptAndNotOverwritten(whole.substr(0, length));
  Put(whole);
  EXPECT_EQ(Key(L"Top", KEY_READ).Number(L"Number"), 7u);
}

TEST_F(HiveTest, MalformedOnesAreCorruptAndNotOverwritten) {
  for (const char* text :
       {"end 1\n", "end 0\nend 0\n", "[Sub\\Orphan]\nend 1\n", "[A]\n[a]\nend 2\n",
        "[A]\n\"n\"=\"1\"\n\"N\"=\"2\"\nend 3\n", "[]\nend 1\n", "[A\\]\nend 1\n", "[A\nend 1\n",
        "[A]\n\"n\"=dword:12345\nend 2\n", "[A]\n\"n\"=\"\\q\"\nend 2\n",
        "[A]\n\"n\"=\"open\nend 2\n", "[A]\n\"n\"=hex(3):1\nend 2\n",
        "[A]\n\"n\"=hex(3):11,\nend 2\n", "[A]\n\"n\"=hex(99999999999):11\nend 2\n",
        "[A]\n\"n\"=\"\xC3\"\nend 2\n", "[A]\n\"\\x00\"=\"1\"\nend 2\n", "[A]\nn=\"1\"\nend 2\n"}) {
    ExpectCorruptAndNotOverwritten(std::string("registry 1\n") + text);
  }
  ExpectCorruptAndNotOverwritten("registry 2\nend 0\n");
  ExpectCorruptAndNotOverwritten(std::string(100'000, '\0'));
  std::string deep = "registry 1\n";
  std::string path;
  for (int i = 0; i < 600; ++i) {
    path += i == 0 ? "k" : "\\k";
    deep += '[' + path + "]\n";
  }
  ExpectCorruptAndNotOverwritten(deep + "end 600\n");
}

TEST_F(HiveTest, AFolderOrAPipeInItsPlaceIsCorruptWithoutWaiting) {
  std::filesystem::create_directory(file_);
  EXPECT_EQ(Create(L"Top"), kCorrupt);
  std::filesystem::remove(file_);
  ASSERT_EQ(::mkfifo(file_.c_str(), 0600), 0);
  EXPECT_EQ(Create(L"Top"), kCorrupt);
}

TEST_F(HiveTest, ATemporaryFileOfACrashIsNoObstacle) {
  ASSERT_EQ(Create(L"Top"), 0);
  std::ofstream(folder_ / "machine.hive.new") << "registry 1\n[Half";
  EXPECT_EQ(Create(L"Other"), 0);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "machine.hive.new"));
  EXPECT_THAT(Content(), ::testing::HasSubstr("[Other]"));
}

TEST_F(HiveTest, AFullDiskLeavesTheOldOne) {
  ASSERT_EQ(Create(L"Top"), 0);
  const std::string before = Content();
  const auto create = [] {
    // The limit on a file's size is the nearest thing to a full disk that needs no privilege.
    std::signal(SIGXFSZ, SIG_IGN);
    const struct rlimit limit { 8, 8 };
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ::_exit(Create(L"Other") == 0 ? 1 : 0);
  };
  EXPECT_EXIT(create(), testing::ExitedWithCode(0), "");
  EXPECT_EQ(Content(), before);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "machine.hive.new"));
  EXPECT_EQ(Create(L"Other"), 0);
}

TEST_F(HiveTest, ProcessesThatWriteAtOnceLoseNothing) {
  ASSERT_EQ(Create(L"Top"), 0);
  std::vector<pid_t> writers;
  for (const wchar_t writer : {L'a', L'b', L'c', L'd', L'e'}) {
    writers.push_back(::fork());
    if (writers.back() != 0) continue;
    for (DWORD each = 0; each < 20; ++each)
      SetNumber((writer + std::to_wstring(each)).c_str(), each);
    ::_exit(0);
  }
  for (const pid_t writer : writers)
    ::waitpid(writer, nullptr, 0);
  EXPECT_THAT(Content(), ::testing::EndsWith("\nend 101\n")) << "the key and 5 times 20 values";
}

TEST_F(HiveTest, AWriterKilledAtAnyMomentLeavesAWholeHive) {
  ASSERT_EQ(Create(L"Top"), 0);
  for (int round = 0; round < 20; ++round) {
    const pid_t child = ::fork();
    if (child == 0) {
      for (DWORD number = 0;; ++number)
        SetNumber(L"Number", number);
    }
    ::usleep(static_cast<useconds_t>(1000 * round));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ASSERT_EQ(SetNumber(L"Mine", static_cast<DWORD>(round)), 0);
    ASSERT_EQ(Key(L"Top", KEY_READ).Number(L"Mine"), static_cast<DWORD>(round));
  }
}

TEST_F(HiveTest, IsReadableByItsOwnerAloneAndOthersGetAccessDenied) {
  std::filesystem::remove_all(folder_);
  ASSERT_EQ(Create(L"Top"), 0);
  using std::filesystem::perms;
  EXPECT_EQ(std::filesystem::status(file_).permissions(), perms::owner_read | perms::owner_write);
  EXPECT_EQ(std::filesystem::status(folder_).permissions(), perms::owner_all);

  if (::geteuid() != 0) GTEST_SKIP() << "only root can become somebody else";
  const auto use = [] {
    constexpr uid_t kNobody = 65534;
    if (::setuid(kNobody) != 0) ::_exit(2);
    const bool read = OpenStatus(L"Top") != ERROR_ACCESS_DENIED;
    ::_exit(read || Create(L"Other") != ERROR_ACCESS_DENIED ? 1 : 0);
  };
  EXPECT_EXIT(use(), testing::ExitedWithCode(0), "");
}

}  // namespace
