// Keys as messages, and what is known of the keyboard from them.
#include <windows.h>

#include <gmock/gmock.h>

#include <QApplication>
#include <QTest>
#include <array>

#include "platform/desktop/window_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr RECT kPlace = {60, 70, 260, 170};

// The documented bits of a key message's lParam.
constexpr LPARAM kExtended = 1 << 24;
constexpr LPARAM kAlt = 1 << 29;
constexpr LPARAM kWasDown = 1 << 30;
constexpr LPARAM kUp = static_cast<INT>(0x80000000u);

constexpr LPARAM Scan(int code) {
  return code << 16 | 1;
}

struct Told {
  UINT message;
  WPARAM key;
  LPARAM parameter;
  bool operator==(const Told&) const = default;
};

void PrintTo(const Told& told, std::ostream* stream) {
  *stream << std::hex << "message " << told.message << " key " << told.key << " parameter "
          << told.parameter;
}

class KeyboardOnDesktop : public WindowOnDesktop {
 protected:
  KeyboardOnDesktop() {
    for (const UINT message :
         {WM_KEYDOWN, WM_KEYUP, WM_CHAR, WM_SYSKEYDOWN, WM_SYSKEYUP, WM_SYSCHAR}) {
      On(message, [this, message](HWND, WPARAM wParam, LPARAM lParam) -> LRESULT {
        told_.push_back({message, wParam, lParam});
        if (message == WM_KEYDOWN) NoteState(static_cast<UINT>(wParam));
        return 0;
      });
    }
  }

  // A window with the keyboard.
  HWND CreateFocused() {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    Pump([&] { return QApplication::activeWindow() == WidgetOf(window); });
    PumpAll();
    told_.clear();
    return window;
  }

  std::vector<Told> Take() {
    PumpAll();
    return std::exchange(told_, {});
  }

  // As if the user's layout made that of the key.
  static void Type(HWND window, Qt::Key key, const QString& text,
                   Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::sendKeyEvent(QTest::Click, WidgetOf(window), key, text, modifiers);
  }

  // What ToAscii made of the last key that went down, and which keys were down then.
  std::string typed_;
  std::vector<int> down_;

 private:
  void NoteState(UINT key) {
    std::array<BYTE, 256> keys{};
    ::GetKeyboardState(keys.data());
    WORD characters = 0;
    const int count = ::ToAscii(key, 0, keys.data(), &characters, 0);
    typed_.clear();
    if (count > 0) typed_ += static_cast<char>(characters & 0xFF);
    if (count > 1) typed_ += static_cast<char>(characters >> 8);
    down_.clear();
    for (int each = 0; each < 256; ++each) {
      const bool isDown = ::GetKeyState(each) < 0;
      EXPECT_EQ(isDown, (keys.at(static_cast<std::size_t>(each)) & 0x80) != 0);
      if (isDown) down_.push_back(each);
    }
  }

  std::vector<Told> told_;
};

TEST_F(KeyboardOnDesktop, AKeyIsToldWhenItGoesDownAndUpAndWhatItTypesInBetween) {
  OnWindowThread([this] {
    const HWND window = CreateFocused();
    QTest::keyClick(WidgetOf(window), Qt::Key_A);
    EXPECT_TRUE(down_.empty()) << "told inside the desktop's event";
    EXPECT_THAT(Take(),
                ElementsAre(Told{WM_KEYDOWN, 'A', Scan(0x1E)}, Told{WM_CHAR, 'a', Scan(0x1E)},
                            Told{WM_KEYUP, 'A', Scan(0x1E) | kWasDown | kUp}));
    EXPECT_THAT(down_, ElementsAre('A'));
    EXPECT_EQ(typed_, "a");
  });
}

TEST_F(KeyboardOnDesktop, KeysHaveTheirNumbersPlacesAndCharacters) {
  struct Case {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    QString text;
    UINT virtualKey;
    LPARAM parameter;
    int character;  // 0: none
  };
  const Case cases[] = {
      {Qt::Key_7, {}, "7", '7', Scan(0x08), '7'},
      {Qt::Key_Plus, {}, "+", VK_OEM_PLUS, Scan(0x0D), '+'},
      {Qt::Key_Space, {}, " ", VK_SPACE, Scan(0x39), ' '},
      {Qt::Key_Return, {}, "\r", VK_RETURN, Scan(0x1C), 13},
      {Qt::Key_Enter, Qt::KeypadModifier, "\r", VK_RETURN, Scan(0x1C) | kExtended, 13},
      {Qt::Key_Escape, {}, "\x1b", VK_ESCAPE, Scan(0x01), 27},
      {Qt::Key_Backspace, {}, "\b", VK_BACK, Scan(0x0E), 8},
      {Qt::Key_Tab, {}, "\t", VK_TAB, Scan(0x0F), 9},
      {Qt::Key_Delete, {}, "\x7f", VK_DELETE, Scan(0x53) | kExtended, 0},
      {Qt::Key_Insert, {}, "", VK_INSERT, Scan(0x52) | kExtended, 0},
      {Qt::Key_Left, {}, "", VK_LEFT, Scan(0x4B) | kExtended, 0},
      {Qt::Key_Left, Qt::KeypadModifier, "", VK_LEFT, Scan(0x4B), 0},
      {Qt::Key_PageDown, {}, "", VK_NEXT, Scan(0x51) | kExtended, 0},
      {Qt::Key_Home, {}, "", VK_HOME, Scan(0x47) | kExtended, 0},
      {Qt::Key_F1, {}, "", VK_F1, Scan(0x3B), 0},
      {Qt::Key_F11, {}, "", VK_F11, Scan(0x57), 0},
      {Qt::Key_F13, {}, "", VK_F13, Scan(0x64), 0},
      {Qt::Key_F24, {}, "", VK_F24, Scan(0x76), 0},
      {Qt::Key_4, Qt::KeypadModifier, "4", VK_NUMPAD4, Scan(0x4B), '4'},
      {Qt::Key_Comma, Qt::KeypadModifier, ",", VK_DECIMAL, Scan(0x53), ','},
      {Qt::Key_Slash, Qt::KeypadModifier, "/", VK_DIVIDE, Scan(0x35) | kExtended, '/'},
  };
  OnWindowThread([&] {
    const HWND window = CreateFocused();
    for (const Case& each : cases) {
      QKeyEvent event(QEvent::KeyPress, each.key, each.modifiers, each.text);
      QApplication::sendEvent(WidgetOf(window), &event);
      std::vector<Told> expected = {{WM_KEYDOWN, each.virtualKey, each.parameter}};
      if (each.character != 0) {
        expected.push_back({WM_CHAR, static_cast<WPARAM>(each.character), each.parameter});
      }
      EXPECT_EQ(Take(), expected) << "key " << std::hex << each.key;
      EXPECT_EQ(typed_.size(), each.character != 0 ? 1u : 0u) << "key " << std::hex << each.key;
    }
  });
}

TEST_F(KeyboardOnDesktop, PlacesComeFromTheKeyboardWhereItTellsThem) {
  OnWindowThread([this] {
    const HWND window = CreateFocused();
    // What stands above the 2 depends on the layout; the display server counts from 8 on.
    const int place = 0x03;
    QKeyEvent event(QEvent::KeyPress, Qt::Key_QuoteDbl, Qt::ShiftModifier, place + 8, 0, 0, "\"");
    QApplication::sendEvent(WidgetOf(window), &event);
    EXPECT_THAT(Take(),
                ElementsAre(Told{WM_KEYDOWN, '2', Scan(place)}, Told{WM_CHAR, '"', Scan(place)}));
    EXPECT_EQ(typed_, "\"");
    EXPECT_THAT(down_, ElementsAre(VK_SHIFT, '2'));
  });
}

TEST_F(KeyboardOnDesktop, KeysTypeWhatTheUsersLayoutHas) {
  OnWindowThread([this] {
    const HWND window = CreateFocused();
    Type(window, Qt::Key_Aring, QString::fromUtf8("å"));
    EXPECT_EQ(Take().at(1).key, WPARAM{0xE5});
    EXPECT_EQ(typed_, "å");
    Type(window, Qt::Key_Aring, QString::fromUtf8("Å"), Qt::ShiftModifier);
    Take();
    EXPECT_EQ(typed_, "Å");
    // As it was last seen, whatever is down now.
    std::array<BYTE, 256> keys{};
    WORD characters = 0;
    EXPECT_EQ(::ToAscii(VK_OEM_4, 0, keys.data(), &characters, 0), 2);
    EXPECT_EQ(characters, 0xA5C3);
    // A dead key types nothing.
    Type(window, Qt::Key_Equal, "");
    PumpAll();
    EXPECT_EQ(::ToAscii(VK_OEM_PLUS, 0, keys.data(), &characters, 0), 0);
  });
}

TEST_F(KeyboardOnDesktop, ShiftAndCtrlChangeTheCharacter) {
  OnWindowThread([this] {
    const HWND window = CreateFocused();
    Type(window, Qt::Key_B, "B", Qt::ShiftModifier);
    EXPECT_THAT(Take(),
                ElementsAre(Told{WM_KEYDOWN, VK_SHIFT, Scan(0x2A)},
                            Told{WM_KEYDOWN, 'B', Scan(0x30)}, Told{WM_CHAR, 'B', Scan(0x30)},
                            Told{WM_KEYUP, 'B', Scan(0x30) | kWasDown | kUp},
                            Told{WM_KEYUP, VK_SHIFT, Scan(0x2A) | kWasDown | kUp}));
    EXPECT_THAT(down_, ElementsAre(VK_SHIFT, 'B'));
    EXPECT_EQ(::GetKeyState(VK_SHIFT), 0);
    QTest::keyClick(WidgetOf(window), Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(Take().at(2), (Told{WM_CHAR, 2, Scan(0x30)}));
    EXPECT_EQ(typed_, "\x02");
  });
}

TEST_F(KeyboardOnDesktop, KeysWithAltAreTheSystems) {
  OnWindowThread([this] {
    const HWND window = CreateFocused();
    QTest::keyClick(WidgetOf(window), Qt::Key_X, Qt::AltModifier);
    EXPECT_THAT(Take(), ElementsAre(Told{WM_SYSKEYDOWN, VK_MENU, Scan(0x38) | kAlt},
                                    Told{WM_SYSKEYDOWN, 'X', Scan(0x2D) | kAlt},
                                    Told{WM_SYSCHAR, 'x', Scan(0x2D) | kAlt},
                                    Told{WM_SYSKEYUP, 'X', Scan(0x2D) | kAlt | kWasDown | kUp},
                                    Told{WM_SYSKEYUP, VK_MENU, Scan(0x38) | kWasDown | kUp}));
  });
}

TEST_F(KeyboardOnDesktop, AKeyThatIsHeldDownRepeatsItselfWithoutGoingUp) {
  OnWindowThread([this] {
    const HWND window = CreateFocused();
    const auto send = [&](QEvent::Type type, bool repeats) {
      QKeyEvent event(type, Qt::Key_Down, {}, QString(), repeats);
      QApplication::sendEvent(WidgetOf(window), &event);
    };
    const LPARAM parameter = Scan(0x50) | kExtended;
    send(QEvent::KeyPress, false);
    send(QEvent::KeyRelease, true);
    send(QEvent::KeyPress, true);
    EXPECT_LT(::GetAsyncKeyState(VK_DOWN), 0);
    send(QEvent::KeyRelease, false);
    EXPECT_EQ(::GetAsyncKeyState(VK_DOWN), 0);
    EXPECT_THAT(Take(), ElementsAre(Told{WM_KEYDOWN, VK_DOWN, parameter},
                                    Told{WM_KEYDOWN, VK_DOWN, parameter | kWasDown},
                                    Told{WM_KEYUP, VK_DOWN, parameter | kWasDown | kUp}));
  });
}

TEST_F(KeyboardOnDesktop, KeysAreForTheWindowWithTheKeyboardAlone) {
  OnWindowThread([this] {
    const HWND window = CreateFocused();
    const HWND child = Create(L"", {10, 20, 60, 50}, WS_CHILD | WS_VISIBLE, window);
    const HWND button = ::CreateWindowExW(0, L"Button", L"Go", WS_CHILD | WS_VISIBLE, 100, 20, 50,
                                          30, window, nullptr, nullptr, nullptr);
    HWND got = nullptr;
    On(WM_KEYDOWN, [&](HWND who, WPARAM, LPARAM) -> LRESULT {
      got = who;
      return 0;
    });
    ::SetFocus(child);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A);
    PumpAll();
    EXPECT_EQ(got, child);
    Take();
    // The toolkit offers what a button has no use for to the window around it.
    ::SetFocus(button);
    QTest::keyClick(WidgetOf(button), Qt::Key_X);
    EXPECT_THAT(Take(), IsEmpty());
    EXPECT_EQ(got, child);
  });
}

TEST_F(KeyboardOnDesktop, F1AsksForHelpUnlessTheWindowTakesItForItself) {
  OnWindowThread([this] {
    const HWND window = CreateFocused();
    std::vector<UINT> messages;
    bool takesIt = false;
    On(WM_KEYDOWN, [&](HWND who, WPARAM wParam, LPARAM lParam) -> LRESULT {
      messages.push_back(WM_KEYDOWN);
      return takesIt ? 0 : ::DefWindowProcW(who, WM_KEYDOWN, wParam, lParam);
    });
    On(WM_HELP, [&](HWND, WPARAM, LPARAM lParam) -> LRESULT {
      messages.push_back(WM_HELP);
      EXPECT_EQ(reinterpret_cast<const HELPINFO*>(lParam)->hItemHandle, window);
      return TRUE;
    });
    QTest::keyClick(WidgetOf(window), Qt::Key_F1);
    PumpAll();
    EXPECT_THAT(messages, ElementsAre(WM_KEYDOWN, WM_HELP));
    takesIt = true;
    messages.clear();
    QTest::keyClick(WidgetOf(window), Qt::Key_F1);
    PumpAll();
    EXPECT_THAT(messages, ElementsAre(WM_KEYDOWN));
  });
}

TEST_F(KeyboardOnDesktop, BeepingTakesTheDesktopOnly) {
  OnWindowThread([this] {
    CreateFocused();
    EXPECT_TRUE(::MessageBeep(0));
    PumpAll();
  });
}

}  // namespace
