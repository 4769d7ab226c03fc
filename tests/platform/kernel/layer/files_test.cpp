#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/kit/failing_call.h"
#include "platform/testing/simulated_machine.h"

namespace {

std::wstring ProgramFolder() {
  wchar_t path[MAX_PATH];
  const std::wstring name(path, ::GetModuleFileNameW(nullptr, path, MAX_PATH));
  return name.substr(0, name.find_last_of(L'\\'));
}

DWORD Attributes(const std::wstring& path) {
  return ::GetFileAttributesW(path.c_str());
}

TEST(Files, AttributesTellFoldersAndReadOnlyFiles) {
  const platform::SimulatedMachine machine;
  const std::filesystem::path file = machine.ProgramFolder() / "caf\xC3\xA9 file";
  std::ofstream(file) << "x";
  const std::wstring folder = ProgramFolder();
  EXPECT_EQ(Attributes(folder), FILE_ATTRIBUTE_DIRECTORY);
  EXPECT_EQ(Attributes(folder + L"\\caf\u00e9 file"), FILE_ATTRIBUTE_NORMAL);
  std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  EXPECT_EQ(Attributes(folder + L"\\caf\u00e9 file"), FILE_ATTRIBUTE_READONLY);
}

TEST(Files, AMissingFileIsToldFromAMissingFolder) {
  const platform::SimulatedMachine machine;
  const auto find = [folder = ProgramFolder()](const wchar_t* path) {
    return [=] { return Attributes(folder + path) != INVALID_FILE_ATTRIBUTES; };
  };
  ExpectFailures({{"file", find(L"\\nothing"), ERROR_FILE_NOT_FOUND},
                  {"folder", find(L"\\nothing\\more"), ERROR_PATH_NOT_FOUND}});
}

TEST(Files, TheCurrentFolderTellsItsSizeWhenItDoesNotFit) {
  wchar_t folder[1024];
  const DWORD length = ::GetCurrentDirectoryW(1024, folder);
  ASSERT_NE(length, 0u);
  EXPECT_EQ(std::wstring_view(folder).size(), length);
  EXPECT_EQ(folder[0], L'\\');
  EXPECT_EQ(Attributes(folder), FILE_ATTRIBUTE_DIRECTORY);
  EXPECT_EQ(::GetCurrentDirectoryW(length, folder), length + 1);
  EXPECT_EQ(::GetCurrentDirectoryW(0, nullptr), length + 1);
}

}  // namespace
