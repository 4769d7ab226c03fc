// The clipboard, as a program fills it.
#include <QClipboard>
#include <cwchar>

#include "platform/kit/failing_call.h"
#include "platform/qt/window_fixture.h"

namespace {

constexpr DWORD kClosed = ERROR_CLIPBOARD_NOT_OPEN;

using ClipboardTest = WindowOnDesktop;

TEST_F(ClipboardTest, OnlyTheWindowThatEmptiedItFillsItAndItKeepsTheMemory) {
  WithWindow([&] {
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, 9 * sizeof(wchar_t));
    std::wcscpy(static_cast<wchar_t*>(::GlobalLock(memory)), L"one\r\ntwo");
    const auto fill = [&] { return ::SetClipboardData(CF_UNICODETEXT, memory); };
    ExpectFailures({{"EmptyClipboard", [] { return ::EmptyClipboard(); }, kClosed},
                    {"SetClipboardData", fill, kClosed},
                    {"CloseClipboard", [] { return ::CloseClipboard(); }, kClosed}});
    EXPECT_TRUE(::OpenClipboard(window_));
    const auto openAgain = [] { return ::OpenClipboard(nullptr); };
    ExpectFailures({{"a second time", openAgain, ERROR_ACCESS_DENIED},
                    {"without having emptied it", fill, kClosed}});
    EXPECT_TRUE(::EmptyClipboard());
    const auto fillWith = [](UINT format, HANDLE with) { return ::SetClipboardData(format, with); };
    ExpectFailures({{"a picture", [&] { return fillWith(2, memory); }, ERROR_INVALID_PARAMETER},
                    {"nothing", [&] { return fillWith(13, nullptr); }, ERROR_INVALID_HANDLE}});
    EXPECT_EQ(fill(), memory);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "one\ntwo");
    EXPECT_NE(::GlobalLock(memory), nullptr);
    EXPECT_TRUE(::CloseClipboard());
    EXPECT_EQ(::GlobalLock(memory), nullptr) << "the memory is left";
  });
}

}  // namespace
