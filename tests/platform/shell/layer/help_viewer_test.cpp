// Compiled help files, whole and damaged, and the viewer on a machine without a desktop.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <htmlhelp.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/shell/help_book.h"
#include "platform/shell/help_reader.h"
#include "platform/testing/simulated_machine.h"

namespace platform {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class HelpViewerTest : public ::testing::Test {
 protected:
  HelpViewerTest() {
    std::ifstream file(kGuide, std::ios::binary);
    whole_.assign(std::istreambuf_iterator<char>(file), {});
  }

  // Puts a file with these bytes beside the program.
  std::filesystem::path Put(const std::string& bytes) const {
    const std::filesystem::path path = machine_.ProgramFolder() / "guide.chm";
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
    return path;
  }
  bool IsRead(const std::string& bytes) const { return ReadHelpFile(Put(bytes)).has_value(); }

  static constexpr const char* kGuide = HELP_GUIDE;
  SimulatedMachine machine_;
  std::string whole_;
};

TEST_F(HelpViewerTest, ABookHasTheTitleTheContentsAndTheTopicsOfItsFile) {
  const auto book = OpenHelpBook(Put(whole_));
  ASSERT_NE(book, nullptr);
  EXPECT_EQ(book->title, L"V\u00E4gen till \u00F6n");
  const HelpTarget harbour{L"/html/harbour.html", {}};
  EXPECT_EQ(book->home, harbour);
  EXPECT_THAT(book->contents,
              ElementsAre(HelpEntry{L"Hamnen & f\u00E4rjan", harbour, 0},
                          HelpEntry{L"F\u00E4rjan", HelpTarget{L"/html/ferry.html", {}}, 1}));
  std::vector<std::wstring> titles;
  for (const HelpTopic& topic : book->topics)
    titles.push_back(topic.title);
  EXPECT_THAT(titles, ElementsAre(L"Island", L"The ferry", L"The harbour"));
  EXPECT_NE(book->file.Find(L"/DOT.PNG"), nullptr);
  EXPECT_EQ(OpenHelpBook(machine_.ProgramFolder() / "guide.chm"), book);
  Put(whole_.substr(0, whole_.size() / 2));
  EXPECT_EQ(OpenHelpBook(machine_.ProgramFolder() / "guide.chm"), nullptr);
}

TEST_F(HelpViewerTest, WithoutSettingsAndContentsEveryTopicIsListedByItsTitle) {
  HelpFile file;
  file.Add(L"/b.htm", "<title>One</title>");
  file.Add(L"/a.HTML", "\xE5");
  file.Add(L"/c.txt", "");
  const HelpBook book = MakeHelpBook(std::move(file));
  EXPECT_THAT(book.contents, ElementsAre(HelpEntry{L"/a.HTML", HelpTarget{L"/a.HTML", {}}, 0},
                                         HelpEntry{L"One", HelpTarget{L"/b.htm", {}}, 0}));
  EXPECT_EQ(book.home, (HelpTarget{L"/a.HTML", {}}));
  EXPECT_EQ(book.topics[0].text, L"\u00E5");
}

// Some of the damages crash the library that decodes the file.
TEST_F(HelpViewerTest, ADamagedFileHarmsNobody) {
  for (std::size_t eighths = 0; eighths < 8; ++eighths)
    EXPECT_FALSE(IsRead(whole_.substr(0, whole_.size() * eighths / 8))) << eighths;
  const std::size_t compression = whole_.find("LZXC");
  ASSERT_NE(compression, std::string::npos);
  constexpr std::size_t kStep = 101;
  int refused = 0;
  const auto damage = [&](std::size_t at) {
    std::string damaged = whole_;
    damaged[at] = static_cast<char>(~damaged[at]);
    if (!IsRead(damaged)) ++refused;
  };
  for (std::size_t at = 0; at < whole_.size(); at += kStep)
    damage(at);
  for (std::size_t at = compression; at < compression + 16; ++at)
    damage(at);
  EXPECT_GT(refused, 8);
  EXPECT_TRUE(IsRead(whole_));
}

TEST_F(HelpViewerTest, OnlyFilesThatNobodyElseCanWriteAreRead) {
  const std::filesystem::path path = Put(whole_);
  std::filesystem::permissions(path, std::filesystem::perms::others_write,
                               std::filesystem::perm_options::add);
  EXPECT_FALSE(ReadHelpFile(path).has_value());
  EXPECT_FALSE(ReadHelpFile(machine_.ProgramFolder()).has_value());
  EXPECT_FALSE(ReadHelpFile("/dev/zero").has_value());
}

TEST_F(HelpViewerTest, WhatCannotBeShownIsRefusedWithAReason) {
  const HMODULE library = ::LoadLibraryW(L"C:\\Windows\\System32\\HHCTRL.OCX");
  using Viewer = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);
  const auto show =
      reinterpret_cast<Viewer>(::GetProcAddress(library, reinterpret_cast<LPCSTR>(ULONG_PTR{15})));
  ASSERT_NE(show, nullptr);
  EXPECT_EQ(::GetProcAddress(library, reinterpret_cast<LPCSTR>(ULONG_PTR{16})), nullptr);
  DWORD cookie = 0;
  show(nullptr, nullptr, HH_INITIALIZE, reinterpret_cast<DWORD_PTR>(&cookie));
  EXPECT_NE(cookie, 0u);
  Put(whole_);
  HH_POPUP popup{};
  popup.cbStruct = sizeof popup;
  popup.idString = 7;
  HH_POPUP unknown = popup;
  unknown.idString = 8;
  HH_POPUP narrow = popup;
  narrow.cbStruct = 52;
  const struct {
    const wchar_t* file;
    UINT command;
    HH_POPUP* popup;
    const char* reason;
  } cases[] = {
      {L"none.chm::/a.html", HH_DISPLAY_TOPIC, nullptr, "none.chm cannot be read"},
      {L"guide.chm::/html/ferry.html", HH_DISPLAY_TOPIC, nullptr, "no desktop"},
      {L"guide.chm::/popups.txt", HH_DISPLAY_TEXT_POPUP, &popup, "no desktop"},
      {L"guide.chm::/popups.txt", HH_DISPLAY_TEXT_POPUP, &unknown, "no popup text 8"},
      {L"guide.chm::/popups.txt", HH_DISPLAY_TEXT_POPUP, &narrow, "popup"},
      {L"guide.chm::/none.txt", HH_DISPLAY_TEXT_POPUP, &popup, "no popup text 7"},
      {nullptr, HH_DISPLAY_TOPIC, nullptr, "topic"},
      {nullptr, 1, nullptr, "unsupported command 1"},
  };
  for (const auto& each : cases) {
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(show(nullptr, each.file, each.command, reinterpret_cast<DWORD_PTR>(each.popup)),
              nullptr);
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), HasSubstr(each.reason));
  }
  EXPECT_EQ(show(nullptr, nullptr, HH_UNINITIALIZE, cookie), nullptr);
  ::FreeLibrary(library);
}

}  // namespace
}  // namespace platform
