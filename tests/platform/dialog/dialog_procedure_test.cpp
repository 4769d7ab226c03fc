// What dialog procedures get and how they answer, and how modal dialogs begin and end.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <thread>

#include "platform/dialog/scripted_dialog.h"
#include "platform/dialog/template_bytes.h"

namespace {

using ::testing::Contains;
using ::testing::Not;

constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_SETFONT | DS_CENTER;
constexpr DWORD kItem = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
constexpr int kFirstField = 1001;
constexpr int kSecondField = 1002;

LPCWSTR TwoFields() {
  static const LPCWSTR name = [] {
    TemplateBytes bytes(kStyle, {0, 0, 120, 70}, u"Two fields");
    bytes.Item(u"Edit", kFirstField, kItem, {5, 5, 100, 14}, u"first");
    bytes.Item(u"Edit", kSecondField, kItem, {5, 25, 100, 14}, u"second");
    bytes.Item(0x80, IDOK, kItem | BS_DEFPUSHBUTTON, {5, 45, 50, 14}, u"OK");
    bytes.Item(0x80, IDCANCEL, kItem, {60, 45, 50, 14}, u"Cancel");
    return AddTemplate(bytes);
  }();
  return name;
}

HWND TopLevelWindow() {
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = ::DefWindowProcW;
  windowClass.lpszClassName = L"Owner";
  ::RegisterClassExW(&windowClass);
  return ::CreateWindowExW(0, L"Owner", L"Owner", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr,
                           nullptr, nullptr, nullptr);
}

TEST(DialogProcedure, TheFontComesBeforeWmInitDialog) {
  ScriptedDialog dialog;
  dialog.Create(TwoFields());
  const auto& messages = dialog.Messages();
  const auto font = std::ranges::find(messages, WM_SETFONT);
  const auto start = std::ranges::find(messages, WM_INITDIALOG);
  ASSERT_NE(start, messages.end());
  EXPECT_LT(font, start);
  // The procedure is told of nothing that happened before the dialog was complete.
  EXPECT_THAT(messages, Not(Contains(WM_NCCREATE)));
  EXPECT_THAT(messages, Not(Contains(WM_CREATE)));
}

TEST(DialogProcedure, WmInitDialogGetsTheFirstControlAndTheParameter) {
  ScriptedDialog dialog;
  WPARAM control = 0;
  LPARAM parameter = 0;
  dialog.On(WM_INITDIALOG, [&](HWND, WPARAM wParam, LPARAM lParam) -> INT_PTR {
    control = wParam;
    parameter = lParam;
    return TRUE;
  });
  const HWND window = dialog.Create(TwoFields(), nullptr, 42);
  EXPECT_EQ(reinterpret_cast<HWND>(control), ::GetDlgItem(window, kFirstField));
  EXPECT_EQ(parameter, 42);
}

TEST(DialogProcedure, TrueLeavesTheChoiceOfTheFirstControlToTheSystem) {
  ScriptedDialog dialog;
  for (const bool leaves : {true, false}) {
    dialog.On(WM_INITDIALOG, [&](HWND window, WPARAM, LPARAM) -> INT_PTR {
      ::SetFocus(::GetDlgItem(window, kSecondField));
      return leaves ? TRUE : FALSE;
    });
    const HWND window = dialog.Create(TwoFields());
    ::ShowWindow(window, SW_SHOW);
    EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), leaves ? kFirstField : kSecondField);
    ::DestroyWindow(window);
  }
}

TEST(DialogProcedure, AHiddenFirstControlIsPassedOver) {
  ScriptedDialog dialog;
  dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) -> INT_PTR {
    ::ShowWindow(::GetDlgItem(window, kFirstField), SW_HIDE);
    return TRUE;
  });
  ::ShowWindow(dialog.Create(TwoFields()), SW_SHOW);
  EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), kSecondField);
}

TEST(DialogProcedure, TheResultOfAHandledMessageIsWhatWasPutIntoTheWindow) {
  constexpr UINT kMessage = WM_USER + 50;
  ScriptedDialog dialog;
  bool handles = true;
  dialog.On(kMessage, [&](HWND window, WPARAM, LPARAM) -> INT_PTR {
    ::SetWindowLongPtrW(window, DWLP_MSGRESULT, 77);
    return handles ? TRUE : FALSE;
  });
  const HWND window = dialog.Create(TwoFields());
  EXPECT_EQ(::SendMessageW(window, kMessage, 0, 0), 77);
  handles = false;
  EXPECT_EQ(::SendMessageW(window, kMessage, 0, 0), 0);
}

TEST(DialogProcedure, SomeMessagesAreAnsweredByWhatTheProcedureReturns) {
  constexpr UINT kCtlColourStatic = 0x0138;
  ScriptedDialog dialog;
  dialog.On(kCtlColourStatic, [](HWND, WPARAM, LPARAM) -> INT_PTR { return 0x1234; });
  EXPECT_EQ(::SendMessageW(dialog.Create(TwoFields()), kCtlColourStatic, 0, 0), 0x1234);
}

TEST(DialogProcedure, TheWindowKeepsProcedureAndUserValue) {
  ScriptedDialog dialog;
  const HWND window = dialog.Create(TwoFields());
  EXPECT_EQ(::GetWindowLongPtrW(window, DWLP_DLGPROC),
            reinterpret_cast<LONG_PTR>(&ScriptedDialog::Procedure));
  EXPECT_EQ(::SetWindowLongPtrW(window, DWLP_USER, 5), 0);
  EXPECT_EQ(::GetWindowLongPtrW(window, DWLP_USER), 5);
  ::SetLastError(0);
  EXPECT_EQ(::GetWindowLongPtrW(window, DWLP_USER + 8), 0);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_INDEX);
}

TEST(DialogProcedure, TheDefaultButtonCanBeAskedForAndChanged) {
  ScriptedDialog dialog;
  const HWND window = dialog.Create(TwoFields());
  EXPECT_EQ(::SendMessageW(window, DM_GETDEFID, 0, 0), MAKELONG(IDOK, DC_HASDEFID));
  EXPECT_EQ(::SendMessageW(window, DM_SETDEFID, IDCANCEL, 0), TRUE);
  EXPECT_EQ(::SendMessageW(window, DM_GETDEFID, 0, 0), MAKELONG(IDCANCEL, DC_HASDEFID));
  const LRESULT code = ::SendDlgItemMessageW(window, IDCANCEL, WM_GETDLGCODE, 0, 0);
  EXPECT_NE(code & DLGC_DEFPUSHBUTTON, 0);
}

TEST(DialogProcedure, WmNextDlgCtlMovesTheKeyboard) {
  ScriptedDialog dialog;
  dialog.On(WM_INITDIALOG, [](HWND, WPARAM, LPARAM) -> INT_PTR { return TRUE; });
  const HWND window = dialog.Create(TwoFields());
  ::ShowWindow(window, SW_SHOW);
  ::SendMessageW(window, WM_NEXTDLGCTL, FALSE, FALSE);
  EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), kSecondField);
  ::SendMessageW(window, WM_NEXTDLGCTL, TRUE, FALSE);
  EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), kFirstField);
  const HWND cancel = ::GetDlgItem(window, IDCANCEL);
  ::SendMessageW(window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(cancel), TRUE);
  EXPECT_EQ(::GetFocus(), cancel);
}

TEST(DialogItems, TextsAreSetAndReadByNumber) {
  ScriptedDialog dialog;
  const HWND window = dialog.Create(TwoFields());
  EXPECT_TRUE(::SetDlgItemTextW(window, kSecondField, L"changed"));
  wchar_t text[5] = L"";
  EXPECT_EQ(::GetDlgItemTextW(window, kSecondField, text, 5), 4u);
  EXPECT_STREQ(text, L"chan");
  ::SetLastError(0);
  EXPECT_EQ(::GetDlgItem(window, 4711), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_CONTROL_ID_NOT_FOUND);
  EXPECT_EQ(::GetDlgItemTextW(window, 4711, text, 5), 0u);
  EXPECT_STREQ(text, L"");
  EXPECT_FALSE(::EndDialog(::GetDlgItem(window, kFirstField), 1));
  EXPECT_EQ(::GetLastError(), ERROR_WINDOW_NOT_DIALOG);
}

TEST(ModalDialog, EndingItInWmInitDialogNeverShowsIt) {
  ScriptedDialog dialog;
  dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) -> INT_PTR {
    ::EndDialog(window, 31);
    return TRUE;
  });
  EXPECT_EQ(dialog.Run(TwoFields()), 31);
  EXPECT_FALSE(::IsWindow(dialog.Window()));
  EXPECT_THAT(dialog.Messages(), Not(Contains(WM_SHOWWINDOW)));
  EXPECT_THAT(dialog.Messages(), Contains(WM_NCDESTROY));
}

TEST(ModalDialog, ADialogThatIsDestroyedAnswersZero) {
  ScriptedDialog dialog;
  dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) -> INT_PTR {
    ::PostMessageW(window, WM_USER + 1, 0, 0);
    return TRUE;
  });
  dialog.On(WM_USER + 1,
            [](HWND window, WPARAM, LPARAM) -> INT_PTR { return ::DestroyWindow(window); });
  EXPECT_EQ(dialog.Run(TwoFields()), 0);
}

TEST(ModalDialog, QuittingEndsItAndIsPassedOn) {
  ScriptedDialog dialog;
  dialog.On(WM_INITDIALOG, [](HWND, WPARAM, LPARAM) -> INT_PTR {
    ::PostQuitMessage(6);
    return TRUE;
  });
  EXPECT_EQ(dialog.Run(TwoFields()), IDOK);
  MSG message{};
  EXPECT_EQ(::GetMessageW(&message, nullptr, 0, 0), FALSE);
  EXPECT_EQ(message.wParam, 6u);
}

TEST(ModalDialog, TheOwnerIsDisabledMeanwhileAndActiveAfterwards) {
  const HWND owner = TopLevelWindow();
  ScriptedDialog dialog;
  BOOL enabled = TRUE;
  dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) -> INT_PTR {
    return ::PostMessageW(window, WM_USER + 1, 0, 0);
  });
  dialog.On(WM_USER + 1, [&](HWND window, WPARAM, LPARAM) -> INT_PTR {
    enabled = ::IsWindowEnabled(owner);
    return ::EndDialog(window, 1);
  });
  EXPECT_EQ(dialog.Run(TwoFields(), owner), 1);
  EXPECT_FALSE(enabled);
  EXPECT_TRUE(::IsWindowEnabled(owner));
  EXPECT_EQ(::GetActiveWindow(), owner);
  ::EnableWindow(owner, FALSE);
  EXPECT_EQ(dialog.Run(TwoFields(), owner), 1);
  EXPECT_FALSE(::IsWindowEnabled(owner)) << "it was disabled before";
  ::DestroyWindow(owner);
  EXPECT_EQ(dialog.Run(TwoFields(), owner), 0) << "an owner that is none";
}

TEST(ModalDialog, ACallFromAnotherThreadRunsOnTheWindowThread) {
  ScriptedDialog dialog;
  DWORD ranOn = 0;
  dialog.On(WM_INITDIALOG, [&](HWND window, WPARAM, LPARAM) -> INT_PTR {
    ranOn = ::GetCurrentThreadId();
    return ::EndDialog(window, 12);
  });
  const HWND keepsDesktop = TopLevelWindow();
  const LPCWSTR name = TwoFields();
  auto result = std::async(std::launch::async, [&] { return dialog.Run(name); });
  MSG message;
  while (result.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
      ::DispatchMessageW(&message);
  }
  EXPECT_EQ(result.get(), 12);
  EXPECT_EQ(ranOn, ::GetCurrentThreadId());
  ::DestroyWindow(keepsDesktop);
}

TEST(ModalDialog, ClosingAsksForCancelUnlessThatIsDisabled) {
  ScriptedDialog dialog;
  int cancels = 0;
  dialog.On(WM_COMMAND, [&](HWND, WPARAM wParam, LPARAM) -> INT_PTR {
    if (LOWORD(wParam) == IDCANCEL) ++cancels;
    return TRUE;
  });
  const HWND window = dialog.Create(TwoFields());
  const auto close = [&] {
    ::SendMessageW(window, WM_CLOSE, 0, 0);
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
      ::DispatchMessageW(&message);
  };
  close();
  EXPECT_EQ(cancels, 1);
  EXPECT_TRUE(::IsWindow(window));
  ::EnableWindow(::GetDlgItem(window, IDCANCEL), FALSE);
  close();
  EXPECT_EQ(cancels, 1);
}

}  // namespace
