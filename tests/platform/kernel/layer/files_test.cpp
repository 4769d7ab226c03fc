#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/testing/simulated_machine.h"

namespace {

DWORD Attributes(const std::wstring& path) {
  return ::GetFileAttributesW(path.c_str());
}

TEST(Files, AttributesTellFoldersReadOnlyAndMissingFiles) {
  const platform::SimulatedMachine machine;
  const std::filesystem::path file = machine.ProgramFolder() / "caf\xC3\xA9 file";
  std::ofstream(file) << "x";
  wchar_t program[MAX_PATH];
  const DWORD length = ::GetModuleFileNameW(nullptr, program, MAX_PATH);
  const std::wstring folder(program, std::wstring_view(program, length).rfind(L'\\'));
  EXPECT_EQ(Attributes(folder), FILE_ATTRIBUTE_DIRECTORY);
  EXPECT_EQ(Attributes(folder + L"\\caf\u00e9 file"), FILE_ATTRIBUTE_NORMAL);
  std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  EXPECT_EQ(Attributes(folder + L"\\caf\u00e9 file"), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Attributes(folder + L"\\nothing"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(::GetLastError(), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Attributes(folder + L"\\nothing\\more"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(::GetLastError(), ERROR_PATH_NOT_FOUND);
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
