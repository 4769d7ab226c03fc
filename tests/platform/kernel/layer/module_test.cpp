#include <windows.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "platform/kernel/modules.h"
#include "platform/kit/failing_call.h"
#include "platform/testing/simulated_machine.h"

namespace {

INT_PTR WINAPI Answer() {
  return 42;
}

class ModuleTest : public ::testing::Test {
 protected:
  platform::SimulatedMachine machine_;
};

DWORD Lookup(HMODULE module, LPCSTR name) {
  return ErrorOf(::GetProcAddress(module, name) != nullptr);
}

LPCSTR Ordinal(ULONG_PTR number) {
  return reinterpret_cast<LPCSTR>(number);
}

TEST_F(ModuleTest, AModuleOfTheLayerIsFoundInAnyCaseAndWithoutSuffix) {
  platform::RegisterBuiltInModule(L"BuiltIn.dll", {{"Answer", Answer}, {"#15", Answer}});
  for (const wchar_t* name : {L"builtin.DLL", L"BUILTIN", L"\\anywhere\\BuiltIn.dll"}) {
    const HMODULE module = ::LoadLibraryW(name);
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(::GetProcAddress(module, "Answer"), Answer);
    EXPECT_EQ(::GetProcAddress(module, Ordinal(15)), Answer);
    EXPECT_EQ(Lookup(module, "answer"), ERROR_PROC_NOT_FOUND);
    EXPECT_EQ(Lookup(module, Ordinal(1)), ERROR_PROC_NOT_FOUND);
    EXPECT_TRUE(::FreeLibrary(module));
  }
  platform::UnregisterBuiltInModule(L"builtin.dll");
  EXPECT_EQ(ErrorOf(::LoadLibraryW(L"BuiltIn.dll")), ERROR_MOD_NOT_FOUND);
}

TEST_F(ModuleTest, HasItsOwnExportsUntilItHasBeenFreedAsOftenAsLoaded) {
  const HMODULE module = ::LoadLibraryW(L"sample_module.dll");
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(::LoadLibraryW(L"SAMPLE_MODULE"), module);
  EXPECT_EQ(::GetModuleHandleW(L"sample_module"), module);
  for (const char* foreign : {"malloc", "SampleHidden", "NoSuchName", Ordinal(1)})
    EXPECT_EQ(Lookup(module, foreign), ERROR_PROC_NOT_FOUND);
  const FARPROC answer = ::GetProcAddress(module, "SampleAnswer");
  ASSERT_NE(answer, nullptr);
  EXPECT_TRUE(::FreeLibrary(module));
  EXPECT_EQ(answer(), 7);
  EXPECT_TRUE(::FreeLibrary(module));
  EXPECT_EQ(ErrorOf(::GetModuleHandleW(L"sample_module")), ERROR_MOD_NOT_FOUND);
  EXPECT_EQ(ErrorOf(::FreeLibrary(module)), ERROR_INVALID_HANDLE);
  EXPECT_EQ(Lookup(module, "SampleAnswer"), ERROR_INVALID_HANDLE);
}

TEST_F(ModuleTest, AFileThatIsNoModuleIsNotifiedFromAMissingOne) {
  std::ofstream(machine_.ProgramFolder() / "broken.so") << "not a module";
  EXPECT_EQ(ErrorOf(::LoadLibraryW(L"broken.dll")), ERROR_BAD_EXE_FORMAT);
  EXPECT_EQ(ErrorOf(::LoadLibraryW(L"missing.dll")), ERROR_MOD_NOT_FOUND);
  EXPECT_EQ(ErrorOf(::LoadLibraryW(L"")), ERROR_INVALID_PARAMETER);
}

TEST_F(ModuleTest, TheExecutableStaysAndANameOfItThatDoesNotFitIsCut) {
  const HMODULE executable = ::GetModuleHandleW(nullptr);
  EXPECT_TRUE(::FreeLibrary(executable));
  EXPECT_EQ(::GetModuleHandleW(nullptr), executable);
  wchar_t path[MAX_PATH] = {};
  const DWORD length = ::GetModuleFileNameW(executable, path, MAX_PATH);
  EXPECT_EQ(std::wstring(path).size(), length);
  EXPECT_TRUE(std::wstring_view(path).ends_with(L"\\program\\program"));

  wchar_t cut[MAX_PATH] = {};
  ::SetLastError(NO_ERROR);
  EXPECT_EQ(::GetModuleFileNameW(nullptr, cut, length), length);
  EXPECT_EQ(::GetLastError(), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(cut, std::wstring(path, length - 1));
  EXPECT_EQ(::GetModuleFileNameW(nullptr, cut, length + 1), length);
  EXPECT_STREQ(cut, path);
  EXPECT_EQ(::GetModuleFileNameW(nullptr, cut, 0), 0u);
  EXPECT_EQ(::GetModuleFileNameW(reinterpret_cast<HMODULE>(cut), cut, MAX_PATH), 0u);
  EXPECT_EQ(::GetLastError(), ERROR_MOD_NOT_FOUND);
}

TEST_F(ModuleTest, TheExecutableLiesWhereTheRootFolderHasALinkToItAndNowhereElse) {
  platform::SetModuleFileName({});
  const std::filesystem::path executable = platform::ExecutablePath();
  const std::filesystem::path programs = machine_.Root() / "root" / "Programs";
  const std::filesystem::path link = programs / executable.filename();
  std::filesystem::create_directories(programs);
  const std::pair<std::filesystem::path, std::filesystem::path> cases[] = {
      {executable, link}, {"/bin/true", executable}, {"/nowhere", executable}};
  for (const auto& [target, shown] : cases) {
    std::filesystem::remove(link);
    std::filesystem::create_symlink(target, link);
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring expected = shown.wstring();
    std::ranges::replace(expected, L'/', L'\\');
    EXPECT_EQ(path, expected) << target;
  }
}

TEST_F(ModuleTest, OnlyWhatNobodyElseCanChangeIsLoaded) {
  if (::geteuid() != 0) GTEST_SKIP() << "no right to give files to others";
  const std::pair<const char*, DWORD> cases[] = {
      {"chmod 666 *.so", ERROR_ACCESS_DENIED},
      {"chown 1 *.so", ERROR_ACCESS_DENIED},
      {"chmod 775 . && chgrp 1 .", ERROR_ACCESS_DENIED},
      {"chmod 1777 .", NO_ERROR},
      {"mkdir -m 777 o && mv *.so o && ln -s o/*.so .", ERROR_ACCESS_DENIED},
  };
  const std::filesystem::path folder = machine_.ProgramFolder() / "modules";
  const std::filesystem::path sample =
      platform::ExecutablePath().parent_path() / "sample_module.so";
  for (const auto& [command, error] : cases) {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    std::filesystem::copy(sample, folder);
    ASSERT_EQ(std::system(("cd " + folder.string() + " && " + command).c_str()), 0);
    const HMODULE module = ::LoadLibraryW((folder / "sample_module.dll").wstring().c_str());
    EXPECT_EQ(module != nullptr ? NO_ERROR : ::GetLastError(), error) << command;
    ::FreeLibrary(module);
  }
}

}  // namespace
