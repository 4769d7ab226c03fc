// Labels: their texts, their keys and their images.
#include <QLabel>

#include "platform/controls/control_test.h"
#include "platform/gdi/resource_fixture.h"

namespace {

class StaticTest : public ControlTest {};

TEST_F(StaticTest, ATextIsNeverTakenForMarkup) {
  HWND label = Make(L"STATIC", SS_LEFT, L"<b>x</b>");
  const auto* widget = WidgetOf<QLabel>(label);
  EXPECT_EQ(widget->text(), "<b>x</b>");
  EXPECT_EQ(widget->textFormat(), Qt::PlainText);
  ::SetWindowTextW(label, L"other");
  EXPECT_EQ(widget->text(), "other");
  EXPECT_EQ(Send(label, WM_GETDLGCODE), DLGC_STATIC);
}

struct Alignment {
  DWORD style;
  Qt::Alignment expected;
  bool wraps;
};
const Alignment kAlignments[] = {
    {SS_LEFT, Qt::AlignLeft | Qt::AlignTop, true},
    {SS_CENTER, Qt::AlignHCenter | Qt::AlignTop, true},
    {SS_RIGHT, Qt::AlignRight | Qt::AlignTop, true},
    {SS_LEFTNOWORDWRAP, Qt::AlignLeft | Qt::AlignTop, false},
    {SS_LEFT | SS_CENTERIMAGE, Qt::AlignLeft | Qt::AlignVCenter, false},
};

TEST_F(StaticTest, StylesAlignAndWrap) {
  for (const Alignment& each : kAlignments) {
    const auto* widget = WidgetOf<QLabel>(Make(L"STATIC", each.style, L"Text"));
    EXPECT_EQ(widget->alignment(), each.expected) << each.style;
    EXPECT_EQ(widget->wordWrap(), each.wraps) << each.style;
  }
}

TEST_F(StaticTest, TheKeyOfALabelGoesToTheNextControl) {
  BecomeDialog();
  HWND label = Make(L"STATIC", SS_LEFT, L"&Name:");
  HWND edit = Make(L"EDIT", 0);
  HWND other = Make(L"EDIT", 0);
  Focus(other);
  Press(other, Qt::Key_N, Qt::AltModifier);
  EXPECT_TRUE(WidgetOf(edit)->hasFocus());

  ::SetWindowTextW(label, L"Na&me:");
  Focus(other);
  Press(other, Qt::Key_N, Qt::AltModifier);
  EXPECT_TRUE(WidgetOf(other)->hasFocus()) << "the old key still counts";
  Press(other, Qt::Key_M, Qt::AltModifier);
  EXPECT_TRUE(WidgetOf(edit)->hasFocus());
}

TEST_F(StaticTest, TheKeyOfALabelPassesOverWhatCannotTakeIt) {
  BecomeDialog();
  Make(L"STATIC", SS_LEFT, L"&Name:");
  HWND disabled = Make(L"EDIT", 0);
  ::EnableWindow(disabled, FALSE);
  HWND hidden = Make(L"EDIT", 0);
  ::ShowWindow(hidden, SW_HIDE);
  HWND edit = Make(L"EDIT", 0);
  HWND other = Make(L"EDIT", 0);
  Focus(other);
  Press(other, Qt::Key_N, Qt::AltModifier);
  EXPECT_TRUE(WidgetOf(edit)->hasFocus());
}

TEST_F(StaticTest, WithoutPrefixesAnAmpersandIsATextLikeAnother) {
  BecomeDialog();
  Make(L"STATIC", SS_LEFT | SS_NOPREFIX, L"R&D");
  Make(L"EDIT", 0);
  HWND other = Make(L"EDIT", 0);
  Focus(other);
  Press(other, Qt::Key_D, Qt::AltModifier);
  EXPECT_TRUE(WidgetOf(other)->hasFocus());
}

TEST_F(StaticTest, ClicksPassThroughALabel) {
  HWND label = Make(L"STATIC", SS_LEFT, L"Text");
  EXPECT_EQ(WidgetOf(Parent())->childAt(WidgetOf(label)->geometry().center()), nullptr);
}

TEST_F(StaticTest, ImagesOfAnotherKindAreRefused) {
  HWND text = Make(L"STATIC", SS_LEFT, L"Text");
  const auto icon = reinterpret_cast<HICON>(ULONG_PTR{4});
  EXPECT_EQ(Send(text, STM_SETICON, reinterpret_cast<WPARAM>(icon)), 0);
  EXPECT_EQ(Send(text, STM_GETICON), 0);
  HWND picture = Make(L"STATIC", SS_BITMAP);
  EXPECT_EQ(Send(picture, STM_SETIMAGE, IMAGE_ICON, icon), 0);
  EXPECT_EQ(Send(picture, STM_GETIMAGE, IMAGE_ICON), 0);
}

// The picture's size is the control's, unless that is given.
TEST_F(StaticTest, ImagesAreShownInTheirSize) {
  RegisterImageResources();
  const HICON icon = ::LoadIconW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kIconPng));
  ASSERT_NE(icon, nullptr);
  HWND shown = Make(L"STATIC", SS_ICON);
  EXPECT_EQ(Send(shown, STM_SETICON, reinterpret_cast<WPARAM>(icon)), 0);
  EXPECT_EQ(reinterpret_cast<HICON>(Send(shown, STM_GETICON)), icon);
  EXPECT_FALSE(WidgetOf<QLabel>(shown)->pixmap(Qt::ReturnByValue).isNull());
  RECT place{};
  ::GetWindowRect(shown, &place);
  EXPECT_EQ(place.right - place.left, WidgetOf(shown)->width());
  EXPECT_LT(WidgetOf(shown)->width(), 100);
  EXPECT_EQ(reinterpret_cast<HICON>(Send(shown, STM_SETICON, 0)), icon);
  EXPECT_TRUE(WidgetOf<QLabel>(shown)->pixmap(Qt::ReturnByValue).isNull());
}

TEST_F(StaticTest, AnImageIsLoadedByTheNumberInItsName) {
  RegisterImageResources();
  const wchar_t name[] = {0xFFFF, kBitmap24, 0};
  for (const DWORD sizing : {0u, SS_REALSIZECONTROL}) {
    HWND shown = Make(L"STATIC", SS_BITMAP | sizing, name);
    const QPixmap picture = WidgetOf<QLabel>(shown)->pixmap(Qt::ReturnByValue);
    EXPECT_EQ(picture.size(), QSize(2, 2));
    EXPECT_EQ(picture.toImage().pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(WidgetOf(shown)->width(), sizing == 0 ? 2 : 200);
    EXPECT_EQ(TextOf(shown), L"");
    EXPECT_NE(Send(shown, STM_GETIMAGE, IMAGE_BITMAP), 0);
  }
}

TEST_F(StaticTest, OtherKindsAreNotMade) {
  constexpr DWORD kOwnerDrawn = 0x000D;
  EXPECT_EQ(Make(L"STATIC", kOwnerDrawn), nullptr);
}

}  // namespace
