#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace {

WNDCLASSEXW ClassNamed(const wchar_t* name) {
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = ::DefWindowProcW;
  windowClass.hInstance = ::GetModuleHandleW(nullptr);
  windowClass.lpszClassName = name;
  return windowClass;
}

HWND CreateOf(const wchar_t* className) {
  return ::CreateWindowExW(0, className, L"", 0, 0, 0, 0, 0, nullptr, nullptr,
                           ::GetModuleHandleW(nullptr), nullptr);
}

TEST(WindowClass, AStructureOfAnotherSizeIsRefused) {
  for (const int difference : {-1, 1}) {
    WNDCLASSEXW windowClass = ClassNamed(L"Sized");
    windowClass.cbSize += difference;
    EXPECT_EQ(::RegisterClassExW(&windowClass), 0);
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  }
}

TEST(WindowClass, ANameIsTakenWhateverItsCase) {
  const WNDCLASSEXW first = ClassNamed(L"Taken");
  const WNDCLASSEXW second = ClassNamed(L"tAKEN");
  EXPECT_GE(::RegisterClassExW(&first), 0xC000);
  EXPECT_EQ(::RegisterClassExW(&second), 0);
  EXPECT_EQ(::GetLastError(), ERROR_CLASS_ALREADY_EXISTS);
  EXPECT_TRUE(::UnregisterClassW(L"TAKEN", ::GetModuleHandleW(nullptr)));
}

TEST(WindowClass, AClassCanBeNamedByItsAtom) {
  const WNDCLASSEXW windowClass = ClassNamed(L"ByAtom");
  const ATOM atom = ::RegisterClassExW(&windowClass);
  const HWND window = CreateOf(MAKEINTRESOURCEW(atom));
  EXPECT_NE(window, nullptr);
  EXPECT_TRUE(::DestroyWindow(window));
  EXPECT_TRUE(::UnregisterClassW(MAKEINTRESOURCEW(atom), ::GetModuleHandleW(nullptr)));
}

TEST(WindowClass, InformationIsWhatWasRegistered) {
  WNDCLASSW given{};
  given.style = 3;
  given.lpfnWndProc = ::DefWindowProcW;
  given.hInstance = ::GetModuleHandleW(nullptr);
  given.lpszClassName = L"Informed";
  ASSERT_NE(::RegisterClassW(&given), 0);
  WNDCLASSW found{};
  EXPECT_TRUE(::GetClassInfoW(given.hInstance, L"informed", &found));
  EXPECT_EQ(found.style, 3u);
  EXPECT_EQ(found.lpfnWndProc, &::DefWindowProcW);
  EXPECT_EQ(found.hInstance, given.hInstance);
  EXPECT_TRUE(::UnregisterClassW(L"Informed", given.hInstance));
}

TEST(WindowClass, AnUnknownClassIsToldByEveryFunctionInItsOwnWay) {
  const HINSTANCE instance = ::GetModuleHandleW(nullptr);
  WNDCLASSW found{};
  EXPECT_FALSE(::GetClassInfoW(instance, L"Unknown", &found));
  EXPECT_EQ(::GetLastError(), ERROR_CLASS_DOES_NOT_EXIST);
  EXPECT_FALSE(::UnregisterClassW(L"Unknown", instance));
  EXPECT_EQ(::GetLastError(), ERROR_CLASS_DOES_NOT_EXIST);
  EXPECT_EQ(CreateOf(L"Unknown"), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_CANNOT_FIND_WND_CLASS);
}

TEST(WindowClass, AClassWithWindowsStays) {
  const WNDCLASSEXW windowClass = ClassNamed(L"Used");
  ASSERT_NE(::RegisterClassExW(&windowClass), 0);
  const HWND window = CreateOf(L"Used");
  EXPECT_FALSE(::UnregisterClassW(L"Used", windowClass.hInstance));
  EXPECT_EQ(::GetLastError(), ERROR_CLASS_HAS_WINDOWS);
  EXPECT_TRUE(::DestroyWindow(window));
  EXPECT_TRUE(::UnregisterClassW(L"Used", windowClass.hInstance));
  EXPECT_EQ(CreateOf(L"Used"), nullptr);
}

TEST(WindowClass, ANameTooLongOrMissingIsRefused) {
  const std::wstring longest(256, L'x');
  const std::wstring tooLong(257, L'x');
  for (const wchar_t* name : {static_cast<const wchar_t*>(nullptr), L"", tooLong.c_str()}) {
    const WNDCLASSEXW windowClass = ClassNamed(name);
    EXPECT_EQ(::RegisterClassExW(&windowClass), 0);
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  }
  const WNDCLASSEXW windowClass = ClassNamed(longest.c_str());
  EXPECT_NE(::RegisterClassExW(&windowClass), 0);
  EXPECT_TRUE(::UnregisterClassW(longest.c_str(), windowClass.hInstance));
}

TEST(RegisteredMessage, ANameHasOneNumberInTheDocumentedRange) {
  const UINT number = ::RegisterWindowMessageW(L"ShellStarted");
  EXPECT_GE(number, 0xC000u);
  EXPECT_LE(number, 0xFFFFu);
  EXPECT_EQ(::RegisterWindowMessageW(L"SHELLSTARTED"), number);
  EXPECT_NE(::RegisterWindowMessageW(L"ShellStopped"), number);
  EXPECT_EQ(::RegisterWindowMessageW(L""), 0u);
}

}  // namespace
