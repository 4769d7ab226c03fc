#include <windows.h>

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

#include "platform/testing/simulated_machine.h"

namespace {

constexpr auto kCorrupt = static_cast<LSTATUS>(ERROR_REGISTRY_CORRUPT);

// The hive as a file, which the test damages.
class HiveTest : public ::testing::Test {
 protected:
  HiveTest() { std::filesystem::create_directories(Folder()); }
  std::filesystem::path Folder() const { return machine_.Root() / "root" / "registry"; }
  std::filesystem::path File() const { return Folder() / "machine.hive"; }
  std::string Content() const {
    std::ifstream file(File(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void Put(std::string_view text) const {
    std::ofstream(File(), std::ios::binary | std::ios::trunc) << text;
  }

  static LSTATUS Create(const wchar_t* path) {
    HKEY key = nullptr;
    const LSTATUS status = ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, path, 0, nullptr, 0,
                                             KEY_ALL_ACCESS, nullptr, &key, nullptr);
    if (status == 0) ::RegCloseKey(key);
    return status;
  }
  static LSTATUS SetNumber(const wchar_t* path, const wchar_t* name, DWORD number) {
    HKEY key = nullptr;
    LSTATUS status = ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, KEY_WRITE, &key);
    if (status != 0) return status;
    status = ::RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number),
                              sizeof number);
    ::RegCloseKey(key);
    return status;
  }
  static LSTATUS Number(const wchar_t* path, const wchar_t* name, DWORD& number) {
    HKEY key = nullptr;
    LSTATUS status = ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &key);
    if (status != 0) return status;
    DWORD bytes = sizeof number;
    status =
        ::RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(&number), &bytes);
    ::RegCloseKey(key);
    return status;
  }

  platform::SimulatedMachine machine_;
};

TEST_F(HiveTest, IsReadableByItsOwnerAlone) {
  std::filesystem::remove_all(Folder());
  ASSERT_EQ(Create(L"Top"), 0);
  struct stat status {};
  ASSERT_EQ(::stat(File().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0600u);
  ASSERT_EQ(::stat(Folder().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0700u);
}

TEST_F(HiveTest, IsTextThatAPersonCanReadAndWrite) {
  Put("registry 1\n[Top]\n\"Number\"=dword:0000002a\n[Top\\Sub]\n@=\"text\"\nend 4\n");
  DWORD number = 0;
  EXPECT_EQ(Number(L"top", L"number", number), 0);
  EXPECT_EQ(number, 42u);
  EXPECT_EQ(SetNumber(L"Top\\Sub", L"More", 1), 0);
  EXPECT_EQ(Content(),
            "registry 1\n[Top]\n\"Number\"=dword:0000002a\n[Top\\Sub]\n@=\"text\"\n"
            "\"More\"=dword:00000001\nend 5\n");
}

TEST_F(HiveTest, CutOffAnywhereItIsCorruptAndNotOverwritten) {
  ASSERT_EQ(Create(L"Top\\Sub"), 0);
  ASSERT_EQ(SetNumber(L"Top\\Sub", L"Number", 7), 0);
  const std::string whole = Content();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    Put(whole.substr(0, length));
    DWORD number = 0;
    ASSERT_EQ(Number(L"Top\\Sub", L"Number", number), kCorrupt) << length;
    ASSERT_EQ(Create(L"Other"), kCorrupt) << length;
    ASSERT_EQ(Content(), whole.substr(0, length));
  }
  Put(whole);
  DWORD number = 0;
  EXPECT_EQ(Number(L"Top\\Sub", L"Number", number), 0);
  EXPECT_EQ(number, 7u);
}

TEST_F(HiveTest, MalformedOnesAreCorrupt) {
  std::string deep = "registry 1\n";
  std::string path;
  for (int i = 0; i < 600; ++i) {
    path += i == 0 ? "k" : "\\k";
    deep += '[' + path + "]\n";
  }
  deep += "end 600\n";
  for (const std::string& text :
       std::initializer_list<std::string>{"registry 2\nend 0\n",
                                          "registry 1\nend 1\n",
                                          "registry 1\nend 0\nend 0\n",
                                          "registry 1\n[Sub\\Orphan]\nend 1\n",
                                          "registry 1\n[A]\n[a]\nend 2\n",
                                          "registry 1\n[A]\n\"n\"=\"1\"\n\"N\"=\"2\"\nend 3\n",
                                          "registry 1\n[]\nend 1\n",
                                          "registry 1\n[A\\]\nend 1\n",
                                          "registry 1\n[A\nend 1\n",
                                          "registry 1\n[A]\n\"n\"=dword:12345\nend 2\n",
                                          "registry 1\n[A]\n\"n\"=\"\\q\"\nend 2\n",
                                          "registry 1\n[A]\n\"n\"=\"open\nend 2\n",
                                          "registry 1\n[A]\n\"n\"=hex(3):1\nend 2\n",
                                          "registry 1\n[A]\n\"n\"=hex(3):11,\nend 2\n",
                                          "registry 1\n[A]\n\"n\"=hex(99999999999):11\nend 2\n",
                                          "registry 1\n[A]\n\"n\"=\"\xC3\"\nend 2\n",
                                          "registry 1\n[A]\n\"\\x00\"=\"1\"\nend 2\n",
                                          "registry 1\n[A]\nn=\"1\"\nend 2\n",
                                          std::string(100'000, '\0'),
                                          deep}) {
    Put(text);
    DWORD number = 0;
    EXPECT_EQ(Number(L"A", L"n", number), kCorrupt) << text.substr(0, 100);
    EXPECT_EQ(Create(L"Other"), kCorrupt);
    EXPECT_EQ(Content(), text);
  }
}

TEST_F(HiveTest, WhatIsNoFileIsRefusedWithoutWaiting) {
  std::filesystem::create_directory(File());
  EXPECT_EQ(Create(L"Top"), kCorrupt);
  std::filesystem::remove(File());
  ASSERT_EQ(::mkfifo(File().c_str(), 0600), 0);
  EXPECT_EQ(Create(L"Top"), kCorrupt);
}

TEST_F(HiveTest, ATemporaryFileOfACrashIsNoObstacle) {
  ASSERT_EQ(Create(L"Top"), 0);
  std::ofstream(Folder() / "machine.hive.new") << "registry 1\n[Half";
  EXPECT_EQ(Create(L"Other"), 0);
  EXPECT_FALSE(std::filesystem::exists(Folder() / "machine.hive.new"));
  EXPECT_THAT(Content(), ::testing::HasSubstr("[Other]"));
}

TEST_F(HiveTest, AFullDiskLeavesTheOldOne) {
  ASSERT_EQ(Create(L"Top"), 0);
  const std::string before = Content();
  const pid_t child = ::fork();
  if (child == 0) {
    // The limit on a file's size is the nearest thing to a full disk that needs no privilege.
    std::signal(SIGXFSZ, SIG_IGN);
    const struct rlimit limit { 8, 8 };
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ::_exit(Create(L"Other") == 0 ? 1 : 0);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(Content(), before);
  EXPECT_FALSE(std::filesystem::exists(Folder() / "machine.hive.new"));
  EXPECT_EQ(Create(L"Other"), 0);
}

TEST_F(HiveTest, ProcessesThatWriteAtOnceLoseNothing) {
  constexpr int kProcesses = 4;
  constexpr DWORD kValues = 25;
  ASSERT_EQ(Create(L"Top"), 0);
  pid_t children[kProcesses];
  for (int i = 0; i < kProcesses; ++i) {
    children[i] = ::fork();
    if (children[i] != 0) continue;
    bool right = true;
    for (DWORD each = 0; each < kValues; ++each) {
      const std::wstring name = std::to_wstring(i) + L"-" + std::to_wstring(each);
      right = right && SetNumber(L"Top", name.c_str(), each) == 0;
    }
    ::_exit(right ? 0 : 1);
  }
  for (const pid_t child : children) {
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  for (int i = 0; i < kProcesses; ++i) {
    for (DWORD each = 0; each < kValues; ++each) {
      const std::wstring name = std::to_wstring(i) + L"-" + std::to_wstring(each);
      DWORD number = 0;
      ASSERT_EQ(Number(L"Top", name.c_str(), number), 0);
      ASSERT_EQ(number, each);
    }
  }
}

TEST_F(HiveTest, AWriterKilledAtAnyMomentLeavesAWholeHive) {
  ASSERT_EQ(Create(L"Top"), 0);
  for (int round = 0; round < 20; ++round) {
    const pid_t child = ::fork();
    if (child == 0) {
      for (DWORD number = 0;; ++number)
        SetNumber(L"Top", L"Number", number);
    }
    ::usleep(static_cast<useconds_t>(1000 * round));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ASSERT_EQ(SetNumber(L"Top", L"Mine", static_cast<DWORD>(round)), 0);
    DWORD number = 0;
    ASSERT_EQ(Number(L"Top", L"Mine", number), 0);
    ASSERT_EQ(number, static_cast<DWORD>(round));
  }
}

TEST_F(HiveTest, SomebodyWithoutTheRightGetsAccessDenied) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can become somebody else";
  ASSERT_EQ(Create(L"Top"), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    constexpr uid_t kNobody = 65534;
    if (::setuid(kNobody) != 0) ::_exit(2);
    DWORD number = 0;
    const bool denied = Number(L"Top", L"Number", number) == ERROR_ACCESS_DENIED &&
                        Create(L"Other") == ERROR_ACCESS_DENIED;
    ::_exit(denied ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

}  // namespace
