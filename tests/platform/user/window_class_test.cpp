#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "platform/kit/failing_call.h"

namespace {

const HINSTANCE kInstance = ::GetModuleHandleW(nullptr);

ATOM Register(const wchar_t* name, std::size_t size = sizeof(WNDCLASSEXW)) {
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = static_cast<UINT>(size);
  windowClass.style = CS_DBLCLKS;
  windowClass.lpfnWndProc = ::DefWindowProcW;
  windowClass.hInstance = kInstance;
  windowClass.lpszClassName = name;
  return ::RegisterClassExW(&windowClass);
}

HWND CreateOf(const wchar_t* className) {
  return ::CreateWindowExW(0, className, L"", 0, 0, 0, 0, 0, nullptr, nullptr, kInstance, nullptr);
}

TEST(WindowClass, ANameIsTakenWhateverItsCase) {
  EXPECT_GE(Register(L"Taken"), 0xC000);
  EXPECT_EQ(ErrorOf(Register(L"tAKEN")), DWORD{ERROR_CLASS_ALREADY_EXISTS});
  WNDCLASSW found{};
  EXPECT_TRUE(::GetClassInfoW(kInstance, L"taken", &found));
  EXPECT_EQ(found.style, UINT{CS_DBLCLKS});
  EXPECT_EQ(found.lpfnWndProc, &::DefWindowProcW);
  EXPECT_EQ(found.hInstance, kInstance);
  EXPECT_FALSE(::GetClassInfoW(nullptr, L"taken", &found)) << "it is this instance's";
  EXPECT_TRUE(::UnregisterClassW(L"TAKEN", kInstance));
}

TEST(WindowClass, AClassStaysAsLongAsItHasWindows) {
  const auto* const name = MAKEINTRESOURCEW(Register(L"Used"));
  const HWND window = CreateOf(name);
  EXPECT_EQ(ErrorOf(::UnregisterClassW(L"Used", kInstance)), DWORD{ERROR_CLASS_HAS_WINDOWS});
  EXPECT_TRUE(::DestroyWindow(window));
  EXPECT_TRUE(::UnregisterClassW(name, kInstance));
  EXPECT_EQ(CreateOf(L"Used"), nullptr);
}

TEST(WindowClass, ANameHasOneTo256CharactersAndTheStructureOneSize) {
  const std::wstring longest(256, L'x');
  EXPECT_NE(Register(longest.c_str()), 0);
  EXPECT_TRUE(::UnregisterClassW(longest.c_str(), kInstance));
  constexpr DWORD kInvalid = ERROR_INVALID_PARAMETER;
  ExpectFailures({
      {"no name", [] { return Register(nullptr); }, kInvalid},
      {"an empty name", [] { return Register(L""); }, kInvalid},
      {"a longer name", [&] { return Register((longest + L'x').c_str()); }, kInvalid},
      {"a smaller structure", [] { return Register(L"S", sizeof(WNDCLASSEXW) - 1); }, kInvalid},
      {"a larger structure", [] { return Register(L"S", sizeof(WNDCLASSEXW) + 1); }, kInvalid},
  });
}

TEST(WindowClass, ClassesOfTheSystemAreFoundForEveryInstanceAndStay) {
  WNDCLASSW found{};
  EXPECT_TRUE(::GetClassInfoW(nullptr, L"BUTTON", &found));
  EXPECT_TRUE(::GetClassInfoW(kInstance, L"Button", &found));
  // The dialog's class by its name and by the number that the name stands for.
  EXPECT_TRUE(::GetClassInfoW(nullptr, L"#32770", &found));
  EXPECT_TRUE(::GetClassInfoW(nullptr, MAKEINTRESOURCEW(32770), &found));
  EXPECT_TRUE(::DestroyWindow(CreateOf(L"button")));
  EXPECT_EQ(ErrorOf(::UnregisterClassW(L"Button", nullptr)), DWORD{ERROR_CLASS_DOES_NOT_EXIST});
}

TEST(RegisteredMessage, ANameHasOneNumberInTheDocumentedRange) {
  const UINT number = ::RegisterWindowMessageW(L"ShellStarted");
  EXPECT_GE(number, 0xC000u);
  EXPECT_LE(number, 0xFFFFu);
  EXPECT_EQ(::RegisterWindowMessageW(L"SHELLSTARTED"), number);
  EXPECT_NE(::RegisterWindowMessageW(L"ShellStopped"), number);
}

}  // namespace
