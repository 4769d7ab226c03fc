// Keys as messages, and what is known of the keyboard from them.
#include <array>

#include "platform/qt/window_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The documented bits of a key message's lParam.
constexpr LPARAM kExtended = 1 << 24;
constexpr LPARAM kAlt = 1 << 29;
constexpr LPARAM kWasDown = 1 << 30;
constexpr LPARAM kUp = kWasDown | static_cast<INT>(0x80000000u);

constexpr LPARAM Scan(int code) {
  return code << 16 | 1;
}

// The message, its key and its other parameter.
using Notified = std::tuple<UINT, WPARAM, LPARAM>;

class KeyboardOnDesktop : public NotingWindow<Notified> {
 protected:
  KeyboardOnDesktop() {
    for (const UINT message :
         {WM_KEYDOWN, WM_KEYUP, WM_CHAR, WM_SYSKEYDOWN, WM_SYSKEYUP, WM_SYSCHAR}) {
      Hear(message, [this, message](HWND, WPARAM wParam, LPARAM lParam) {
        notified_.emplace_back(message, wParam, lParam);
        if (message == WM_KEYDOWN) NoteState(static_cast<UINT>(wParam));
      });
    }
  }

  // As if the user's layout made that of the key.
  void Type(Qt::Key key, const QString& text, Qt::KeyboardModifiers modifiers = {}) const {
    QTest::sendKeyEvent(QTest::Click, WidgetOf(window_), key, text, modifiers);
  }
  // What ToAscii makes of a key.
  static std::string Typed(UINT key, const std::array<BYTE, 256>& keys) {
    WORD characters = 0;
    const int count = ::ToAscii(key, 0, keys.data(), &characters, 0);
    return {reinterpret_cast<const char*>(&characters), static_cast<std::size_t>(count)};
  }

  // Of the last key that went down: what it typed, and which keys were down then.
  std::string typed_;
  std::vector<std::size_t> down_;

 private:
  void NoteState(UINT key) {
    std::array<BYTE, 256> keys{};
    ::GetKeyboardState(keys.data());
    typed_ = Typed(key, keys);
    down_.clear();
    for (std::size_t each = 0; each < keys.size(); ++each) {
      EXPECT_EQ(::GetKeyState(static_cast<int>(each)) < 0, keys[each] != 0);
      if (keys[each] != 0) down_.push_back(each);
    }
  }
};

TEST_F(KeyboardOnDesktop, AKeyIsNotifiedWhenItGoesDownAndUpAndWhatItTypesInBetween) {
  WithWindow([this] {
    Type(Qt::Key_A, "a");
    EXPECT_THAT(notified_, IsEmpty()) << "told inside the desktop's event";
    EXPECT_THAT(Take(), ElementsAre(Notified{WM_KEYDOWN, 'A', Scan(0x1E)},
                                    Notified{WM_CHAR, 'a', Scan(0x1E)},
                                    Notified{WM_KEYUP, 'A', Scan(0x1E) | kUp}));
    EXPECT_THAT(down_, ElementsAre('A'));
    EXPECT_EQ(typed_, "a");

    Type(Qt::Key_B, "B", Qt::ShiftModifier);
    EXPECT_THAT(Take(), ElementsAre(Notified{WM_KEYDOWN, VK_SHIFT, Scan(0x2A)},
                                    Notified{WM_KEYDOWN, 'B', Scan(0x30)},
                                    Notified{WM_CHAR, 'B', Scan(0x30)},
                                    Notified{WM_KEYUP, 'B', Scan(0x30) | kUp},
                                    Notified{WM_KEYUP, VK_SHIFT, Scan(0x2A) | kUp}));
    EXPECT_THAT(down_, ElementsAre(VK_SHIFT, 'B'));
    EXPECT_EQ(::GetKeyState(VK_SHIFT), 0);

    QTest::keyClick(WidgetOf(window_), Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(Take().at(2), (Notified{WM_CHAR, 2, Scan(0x30)}));
    EXPECT_EQ(typed_, "\x02");

    QTest::keyClick(WidgetOf(window_), Qt::Key_X, Qt::AltModifier);
    EXPECT_THAT(Take(), ElementsAre(Notified{WM_SYSKEYDOWN, VK_MENU, Scan(0x38) | kAlt},
                                    Notified{WM_SYSKEYDOWN, 'X', Scan(0x2D) | kAlt},
                                    Notified{WM_SYSCHAR, 'x', Scan(0x2D) | kAlt},
                                    Notified{WM_SYSKEYUP, 'X', Scan(0x2D) | kAlt | kUp},
                                    Notified{WM_SYSKEYUP, VK_MENU, Scan(0x38) | kUp}));
  });
}

TEST_F(KeyboardOnDesktop, KeysHaveTheirNumbersPlacesAndCharacters) {
  const struct {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    QString text;
    UINT virtualKey;
    LPARAM parameter;
    std::string typed;
    quint32 place = 0;  // as the display server counts, if it tells
  } cases[] = {
      {Qt::Key_7, {}, "7", '7', Scan(0x08), "7"},
      {Qt::Key_Plus, {}, "+", VK_OEM_PLUS, Scan(0x0D), "+"},
      {Qt::Key_Space, {}, " ", VK_SPACE, Scan(0x39), " "},
      {Qt::Key_Return, {}, "\r", VK_RETURN, Scan(0x1C), "\r"},
      {Qt::Key_Enter, Qt::KeypadModifier, "\r", VK_RETURN, Scan(0x1C) | kExtended, "\r"},
      {Qt::Key_Escape, {}, "\x1b", VK_ESCAPE, Scan(0x01), "\x1b"},
      {Qt::Key_Backspace, {}, "\b", VK_BACK, Scan(0x0E), "\b"},
      {Qt::Key_Z, {}, "z", 'Z', Scan(0x2C), "z"},
      {Qt::Key_Tab, {}, "\t", VK_TAB, Scan(0x0F), "\t"},
      {Qt::Key_Delete, {}, "\x7f", VK_DELETE, Scan(0x53) | kExtended, ""},
      {Qt::Key_Insert, {}, "", VK_INSERT, Scan(0x52) | kExtended, ""},
      {Qt::Key_Left, {}, "", VK_LEFT, Scan(0x4B) | kExtended, ""},
      {Qt::Key_Left, Qt::KeypadModifier, "", VK_LEFT, Scan(0x4B), ""},
      {Qt::Key_PageDown, {}, "", VK_NEXT, Scan(0x51) | kExtended, ""},
      {Qt::Key_Home, {}, "", VK_HOME, Scan(0x47) | kExtended, ""},
      {Qt::Key_F1, {}, "", VK_F1, Scan(0x3B), ""},
      {Qt::Key_F11, {}, "", VK_F11, Scan(0x57), ""},
      {Qt::Key_F13, {}, "", VK_F13, Scan(0x64), ""},
      {Qt::Key_F24, {}, "", VK_F24, Scan(0x76), ""},
      {Qt::Key_4, Qt::KeypadModifier, "4", VK_NUMPAD4, Scan(0x4B), "4"},
      {Qt::Key_Comma, Qt::KeypadModifier, ",", VK_DECIMAL, Scan(0x53), ","},
      {Qt::Key_Slash, Qt::KeypadModifier, "/", VK_DIVIDE, Scan(0x35) | kExtended, "/"},
      // What stands above the 2 depends on the layout.
      {Qt::Key_QuoteDbl, Qt::ShiftModifier, "\"", '2', Scan(0x03), "\"", 0x03 + 8},
  };
  WithWindow([&] {
    for (const auto& each : cases) {
      QKeyEvent event(QEvent::KeyPress, each.key, each.modifiers, each.place, 0, 0, each.text);
      QApplication::sendEvent(WidgetOf(window_), &event);
      std::vector<Notified> expected = {{WM_KEYDOWN, each.virtualKey, each.parameter}};
      for (const char character : each.typed)
        expected.emplace_back(WM_CHAR, character, each.parameter);
      EXPECT_EQ(Take(), expected) << "key " << std::hex << each.key;
      EXPECT_EQ(typed_, each.typed) << "key " << std::hex << each.key;
    }
  });
}

TEST_F(KeyboardOnDesktop, KeysTypeWhatTheUsersLayoutHas) {
  WithWindow([this] {
    Type(Qt::Key_Aring, QString::fromUtf8("å"));
    EXPECT_EQ(std::get<WPARAM>(Take().at(1)), WPARAM{0xE5});
    EXPECT_EQ(typed_, "å");
    Type(Qt::Key_Aring, QString::fromUtf8("Å"), Qt::ShiftModifier);
    PumpAll();
    EXPECT_EQ(typed_, "Å");
    EXPECT_EQ(Typed(VK_OEM_4, {}), "å") << "as it was last seen, whatever is down now";
    Type(Qt::Key_Equal, "");
    PumpAll();
    EXPECT_EQ(Typed(VK_OEM_PLUS, {}), "") << "a dead key";
  });
}

TEST_F(KeyboardOnDesktop, AKeyThatIsHeldDownRepeatsItselfWithoutGoingUp) {
  WithWindow([this] {
    const auto send = [&](QEvent::Type type, bool repeats) {
      QKeyEvent event(type, Qt::Key_Down, {}, QString(), repeats);
      QApplication::sendEvent(WidgetOf(window_), &event);
    };
    const LPARAM parameter = Scan(0x50) | kExtended;
    send(QEvent::KeyPress, false);
    send(QEvent::KeyRelease, true);
    send(QEvent::KeyPress, true);
    EXPECT_LT(::GetAsyncKeyState(VK_DOWN), 0);
    send(QEvent::KeyRelease, false);
    EXPECT_EQ(::GetAsyncKeyState(VK_DOWN), 0);
    EXPECT_THAT(Take(), ElementsAre(Notified{WM_KEYDOWN, VK_DOWN, parameter},
                                    Notified{WM_KEYDOWN, VK_DOWN, parameter | kWasDown},
                                    Notified{WM_KEYUP, VK_DOWN, parameter | kUp}));
  });
}

TEST_F(KeyboardOnDesktop, KeysAreForTheWindowWithTheFocusAlone) {
  WithWindow([this] {
    const HWND child = CreateChild(window_);
    const HWND button = CreateButton(window_);
    std::vector<HWND> got;
    Hear(WM_KEYDOWN, [&](HWND who, WPARAM, LPARAM) { got.push_back(who); });
    ::SetFocus(child);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A);
    Take();
    // The toolkit offers what a button has no use for to the window around it.
    ::SetFocus(button);
    QTest::keyClick(WidgetOf(button), Qt::Key_X);
    EXPECT_THAT(Take(), IsEmpty());
    EXPECT_THAT(got, ElementsAre(child));
  });
}

TEST_F(KeyboardOnDesktop, F1AsksForHelpUnlessTheWindowTakesItForItself) {
  WithWindow([this] {
    const HWND child = CreateChild(window_, kChildBounds, {.id = 33});
    ::SetFocus(child);
    On(WM_HELP, [&](HWND, WPARAM, LPARAM lParam) -> LRESULT {
      EXPECT_EQ(reinterpret_cast<const HELPINFO*>(lParam)->hItemHandle, child);
      EXPECT_EQ(reinterpret_cast<const HELPINFO*>(lParam)->iCtrlId, 33);
      return TRUE;
    });
    for (const bool takesIt : {false, true}) {
      On(WM_KEYDOWN, [takesIt](HWND who, WPARAM wParam, LPARAM lParam) -> LRESULT {
        return takesIt ? 0 : ::DefWindowProcW(who, WM_KEYDOWN, wParam, lParam);
      });
      QTest::keyClick(WidgetOf(child), Qt::Key_F1);
      PumpAll();
      EXPECT_EQ(CountOf(WM_HELP), 1);
    }
    EXPECT_EQ(CountOf(WM_KEYDOWN), 2);
  });
}

}  // namespace
