// Labels: their texts and their images.
#include <QLabel>

#include "platform/controls/control_test.h"
#include "platform/gdi/resource_fixture.h"

namespace {

using StaticTest = ControlTest;

TEST_F(StaticTest, ATextIsNeverTakenForMarkup) {
  HWND label = Make(L"STATIC", SS_LEFT, L"<b>x</b>");
  const auto* widget = WidgetOf<QLabel>(label);
  EXPECT_EQ(widget->text(), "<b>x</b>");
  EXPECT_EQ(widget->textFormat(), Qt::PlainText);
  ::SetWindowTextW(label, L"other");
  EXPECT_EQ(widget->text(), "other");
  EXPECT_EQ(Send(label, WM_GETDLGCODE), DLGC_STATIC);
  EXPECT_EQ(WidgetOf(Parent())->childAt(widget->geometry().center()), nullptr) << "takes clicks";
}

TEST_F(StaticTest, StylesAlignAndWrap) {
  constexpr Qt::Alignment kTopLeft = Qt::AlignLeft | Qt::AlignTop;
  for (const auto& [style, alignment, wraps] :
       {std::tuple{DWORD{SS_LEFT}, kTopLeft, true},
        {SS_CENTER, Qt::AlignHCenter | Qt::AlignTop, true},
        {SS_RIGHT, Qt::AlignRight | Qt::AlignTop, true},
        {SS_LEFTNOWORDWRAP, kTopLeft, false},
        {SS_LEFT | SS_CENTERIMAGE, Qt::AlignLeft | Qt::AlignVCenter, false}}) {
    const auto* widget = WidgetOf<QLabel>(Make(L"STATIC", style, L"Text"));
    EXPECT_EQ(widget->alignment(), alignment) << style;
    EXPECT_EQ(widget->wordWrap(), wraps) << style;
  }
}

TEST_F(StaticTest, ImagesOfAnotherKindAreNotTaken) {
  HWND text = Make(L"STATIC", SS_LEFT, L"Text");
  HWND picture = Make(L"STATIC", SS_BITMAP);
  const auto icon = reinterpret_cast<HICON>(ULONG_PTR{4});
  EXPECT_EQ(Send(text, STM_SETICON, reinterpret_cast<WPARAM>(icon)), 0);
  EXPECT_EQ(Send(text, STM_GETICON), 0);
  EXPECT_EQ(Send(picture, STM_SETIMAGE, IMAGE_ICON, icon), 0);
  EXPECT_EQ(Send(picture, STM_GETIMAGE, IMAGE_ICON), 0);
}

// The picture's size is the control's, unless that is given.
TEST_F(StaticTest, ImagesAreShownInTheirSize) {
  RegisterImageResources();
  const HICON icon = ::LoadIconW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kIconPng));
  ASSERT_NE(icon, nullptr);
  HWND shown = Make(L"STATIC", SS_ICON);
  const auto* label = WidgetOf<QLabel>(shown);
  EXPECT_EQ(Send(shown, STM_SETICON, reinterpret_cast<WPARAM>(icon)), 0);
  EXPECT_EQ(reinterpret_cast<HICON>(Send(shown, STM_GETICON)), icon);
  EXPECT_FALSE(label->pixmap(Qt::ReturnByValue).isNull());
  const RECT place = PlaceOf(shown);
  EXPECT_EQ(place.right - place.left, label->width());
  EXPECT_LT(label->width(), 100);
  EXPECT_EQ(reinterpret_cast<HICON>(Send(shown, STM_SETICON, 0)), icon);
  EXPECT_TRUE(label->pixmap(Qt::ReturnByValue).isNull());
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

}  // namespace
