// Tool tips: texts over areas of another window.
#include <QHelpEvent>
#include <QToolTip>

#include "platform/controls/control_test.h"

namespace {

class ToolTipTest : public ControlTest {
 protected:
  TOOLINFOW Tool() {
    TOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.uFlags = TTF_SUBCLASS;
    tool.hwnd = Parent();
    tool.uId = 1;
    tool.rect = {10, 10, 60, 40};
    tool.lpszText = text_.data();
    return tool;
  }
  // What appears where the pointer rests over a widget.
  static QString TipAt(QWidget* widget, QPoint position) {
    QToolTip::hideText();
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
    QHelpEvent rest(QEvent::ToolTip, position, widget->mapToGlobal(position));
    QApplication::sendEvent(widget, &rest);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
  }
  LRESULT Send(UINT message, const TOOLINFOW& tool) const {
    return ::SendMessageW(tip_, message, 0, reinterpret_cast<LPARAM>(&tool));
  }

  HWND tip_ = ::CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr,
                                WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX | TTS_BALLOON, 0, 0, 0, 0,
                                Parent(), nullptr, nullptr, nullptr);
  std::wstring text_ = L"a < b\r\n\r\nc";
};

TEST_F(ToolTipTest, ATextAppearsOverItsAreaAndADisabledControlInIt) {
  const TOOLINFOW tool = Tool();
  EXPECT_TRUE(Send(TTM_ADDTOOLW, tool));
  EXPECT_EQ(TipAt(WidgetOf(Parent()), {30, 30}), "<p>a &lt; b<br><br>c</p>");
  EXPECT_TRUE(TipAt(WidgetOf(Parent()), {5, 30}).isEmpty());
  HWND button = Make(L"Button", 0);
  ::MoveWindow(button, 20, 15, 30, 20, FALSE);
  ::EnableWindow(button, FALSE);
  EXPECT_FALSE(TipAt(WidgetOf(button), {5, 5}).isEmpty());
  Send(TTM_DELTOOLW, tool);
  EXPECT_TRUE(TipAt(WidgetOf(Parent()), {30, 30}).isEmpty());
}

TEST_F(ToolTipTest, WhatIsNotSupportedIsRefused) {
  const std::function<void(TOOLINFOW&)> changes[] = {
      [](TOOLINFOW& tool) { tool.cbSize = 1; }, [](TOOLINFOW& tool) { tool.uFlags = 1; },
      [](TOOLINFOW& tool) { tool.lpszText = nullptr; },
      [](TOOLINFOW& tool) { tool.hwnd = nullptr; }};
  for (const auto& change : changes) {
    TOOLINFOW tool = Tool();
    change(tool);
    EXPECT_FALSE(Send(TTM_ADDTOOLW, tool));
  }
}

}  // namespace
