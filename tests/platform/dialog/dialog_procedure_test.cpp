// What dialog procedures get and how they answer.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/dialog/scripted_dialog.h"

namespace {

using ::testing::Contains;
using ::testing::Not;

class DialogProcedure : public ::testing::Test {
 protected:
  ScriptedDialog dialog_;
};

TEST_F(DialogProcedure, WmInitDialogComesAfterTheFontWithTheFirstControlAndTheParameter) {
  HWND control = nullptr;
  LPARAM parameter = 0;
  dialog_.On(WM_INITDIALOG, [&](HWND, WPARAM wParam, LPARAM lParam) -> INT_PTR {
    control = reinterpret_cast<HWND>(wParam);
    parameter = lParam;
    return TRUE;
  });
  const HWND window = dialog_.Create(Form(), 42);
  EXPECT_EQ(control, ::GetDlgItem(window, kName));
  EXPECT_EQ(parameter, 42);
  const auto& messages = dialog_.Messages();
  const auto start = std::ranges::find(messages, UINT{WM_INITDIALOG});
  EXPECT_LT(std::ranges::find(messages, UINT{WM_SETFONT}), start);
  // The procedure is told of nothing that happened before the dialog was complete.
  EXPECT_THAT(messages, Not(Contains(WM_NCCREATE)));
  EXPECT_THAT(messages, Not(Contains(WM_CREATE)));
}

TEST_F(DialogProcedure, TheFirstControlThatTakesInputHasTheFocusUnlessTheAnswerIsFalse) {
  for (const auto& [answer, hidden, focused] :
       {std::tuple{TRUE, 0, kName}, {FALSE, 0, kCheck}, {TRUE, kName, kFirstKind}}) {
    dialog_.On(WM_INITDIALOG, [&](HWND window, WPARAM, LPARAM) -> INT_PTR {
      ::SetFocus(::GetDlgItem(window, kCheck));
      ::ShowWindow(::GetDlgItem(window, hidden), SW_HIDE);
      return answer;
    });
    const HWND window = dialog_.Show();
    EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), focused);
    ::DestroyWindow(window);
  }
}

TEST_F(DialogProcedure, TheResultOfAHandledMessageIsWhatWasPutIntoTheWindow) {
  constexpr UINT kMessage = WM_USER + 50;
  constexpr UINT kCtlColourStatic = 0x0138;
  bool handles = true;
  dialog_.On(kMessage, [&](HWND window, WPARAM, LPARAM) -> INT_PTR {
    ::SetWindowLongPtrW(window, DWLP_MSGRESULT, 77);
    return handles ? TRUE : FALSE;
  });
  dialog_.On(kCtlColourStatic, [](HWND, WPARAM, LPARAM) -> INT_PTR { return 0x1234; });
  const HWND window = dialog_.Create();
  EXPECT_EQ(::SendMessageW(window, kMessage, 0, 0), 77);
  handles = false;
  EXPECT_EQ(::SendMessageW(window, kMessage, 0, 0), 0);
  EXPECT_EQ(::SendMessageW(window, kCtlColourStatic, 0, 0), 0x1234) << "answered by the return";
}

TEST_F(DialogProcedure, TheWindowKeepsProcedureAndUserValue) {
  const HWND window = dialog_.Create();
  EXPECT_EQ(::GetWindowLongPtrW(window, DWLP_DLGPROC),
            reinterpret_cast<LONG_PTR>(&ScriptedDialog::Procedure));
  EXPECT_EQ(::SetWindowLongPtrW(window, DWLP_USER, 5), 0);
  EXPECT_EQ(::GetWindowLongPtrW(window, DWLP_USER), 5);
}

TEST_F(DialogProcedure, TheDefaultButtonCanBeAskedForAndChanged) {
  const HWND window = dialog_.Create();
  EXPECT_EQ(::SendMessageW(window, DM_GETDEFID, 0, 0), MAKELONG(IDOK, DC_HASDEFID));
  EXPECT_EQ(::SendMessageW(window, DM_SETDEFID, IDCANCEL, 0), TRUE);
  EXPECT_EQ(::SendMessageW(window, DM_GETDEFID, 0, 0), MAKELONG(IDCANCEL, DC_HASDEFID));
  const LRESULT code = ::SendMessageW(::GetDlgItem(window, IDCANCEL), WM_GETDLGCODE, 0, 0);
  EXPECT_NE(code & DLGC_DEFPUSHBUTTON, 0);
}

TEST_F(DialogProcedure, WmNextDlgCtlMovesTheFocus) {
  dialog_.On(WM_INITDIALOG, [](HWND, WPARAM, LPARAM) -> INT_PTR { return TRUE; });
  const HWND window = dialog_.Show();
  const auto cancel = reinterpret_cast<WPARAM>(::GetDlgItem(window, IDCANCEL));
  for (const auto& [next, isHandle, focused] : {std::tuple{WPARAM{FALSE}, FALSE, kFirstKind},
                                                {WPARAM{TRUE}, FALSE, kName},
                                                {cancel, TRUE, IDCANCEL}}) {
    ::SendMessageW(window, WM_NEXTDLGCTL, next, isHandle);
    EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), focused);
  }
}

TEST_F(DialogProcedure, ClosingAsksForCancelUnlessThatIsDisabled) {
  int cancels = 0;
  dialog_.On(WM_COMMAND, [&](HWND, WPARAM wParam, LPARAM) -> INT_PTR {
    if (LOWORD(wParam) == IDCANCEL) ++cancels;
    return TRUE;
  });
  const HWND window = dialog_.Create();
  for (const BOOL enabled : {TRUE, FALSE}) {
    ::EnableWindow(::GetDlgItem(window, IDCANCEL), enabled);
    ::SendMessageW(window, WM_CLOSE, 0, 0);
    DispatchAll();
    EXPECT_EQ(cancels, 1);
    EXPECT_TRUE(::IsWindow(window));
  }
}

}  // namespace
