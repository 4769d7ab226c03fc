// What an item of the menu looks like, drawn into a bitmap.
#include "ui/owner_draw_menu.h"

#include "frame/desktop/frame_test.h"
#include "frame/icon.h"

namespace quillgate {
namespace {

class OwnerDrawMenuTest : public FrameTest {
 protected:
  // Draws the item and answers how many pixels in these columns differ from its background.
  int PixelsDrawn(UINT state, HICON icon, int left, int right) {
    const HDC context = context_.Get();
    DRAWITEMSTRUCT draw{};
    draw.CtlType = ODT_MENU;
    draw.itemID = 7;
    draw.itemState = state;
    draw.itemData = reinterpret_cast<ULONG_PTR>(icon);
    draw.hDC = context;
    draw.rcItem = {0, 0, 100, 20};
    const COLORREF background =
        ::GetSysColor((state & ODS_SELECTED) != 0 ? COLOR_HIGHLIGHT : COLOR_MENU);
    const BrushHandle brush(::CreateSolidBrush(background));
    ::FillRect(context, &draw.rcItem, brush.Get());
    ::SendMessageW(menu_.Window(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&draw));
    int drawn = 0;
    for (int y = 0; y < 20; ++y) {
      for (int x = left; x < right; ++x)
        drawn += ::GetPixel(context, x, y) != background ? 1 : 0;
    }
    return drawn;
  }

  const MemoryDcHandle context_{::CreateCompatibleDC(nullptr)};
  const BitmapHandle bitmap_{::CreateCompatibleBitmap(WindowDc(window_->Get()).Get(), 100, 20)};
  const SelectedObject selected_{context_.Get(), bitmap_.Get()};
  OwnerDrawMenu menu_;
};

TEST_F(OwnerDrawMenuTest, TheIconStandsInItsColumnAndTheTextBesideItBoldWhenItIsTheDefault) {
  OwnerDrawMenu none;
  const IconHandle icon = LoadSmallIcon(IDI_MENU_EXIT);
  menu_.Append(L"Exit", 7, icon.Get(), none);
  ASSERT_TRUE(menu_.Create());
  EXPECT_GT(PixelsDrawn(0, icon.Get(), 1, 17), 20);
  EXPECT_EQ(PixelsDrawn(0, icon.Get(), 17, 24), 0);
  EXPECT_EQ(PixelsDrawn(0, nullptr, 0, 24), 0) << "an item without an icon";
  EXPECT_GT(PixelsDrawn(ODS_SELECTED, nullptr, 24, 100), 20) << "the text of the selected item";
  EXPECT_GT(PixelsDrawn(ODS_DEFAULT, nullptr, 24, 100), PixelsDrawn(0, nullptr, 24, 100));
}

}  // namespace
}  // namespace quillgate
