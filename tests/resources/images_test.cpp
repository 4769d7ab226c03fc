// The program's icons and bitmaps as they are linked into it.
#include <windows.h>

#include <gmock/gmock.h>

#include <cmath>
#include <span>

#include "platform/kernel/resources.h"
#include "resources/resource.h"

namespace {

constexpr std::uint16_t kBitmap = 2;
constexpr std::uint16_t kIcon = 3;
constexpr std::uint16_t kIconGroup = 14;
constexpr LANGID kEnglish = 0x409;

using Bytes = std::span<const std::byte>;

unsigned NumberAt(Bytes bytes, std::size_t offset, std::size_t size) {
  unsigned value = 0;
  for (std::size_t i = size; i-- > 0;)
    value = (value << 8) | std::to_integer<unsigned>(bytes[offset + i]);
  return value;
}

TEST(Images, EveryIconHasItsFourSizesInFullColour) {
  for (const int icon :
       {IDI_CONNECTION_ENABLED, IDI_CONNECTION_DISABLED, IDI_CONNECTION_UNDECIDED,
        IDI_MENU_SETTINGS, IDI_MENU_EXIT, IDI_MENU_STATISTICS, IDI_MENU_HELP, IDI_MENU_LOG_ON,
        IDI_MENU_CONNECTION, IDI_MENU_OVERRIDE, IDI_SETUP_WARNING}) {
    const Bytes group =
        platform::FindResourceBytes(kIconGroup, static_cast<std::uint16_t>(icon), kEnglish);
    ASSERT_EQ(group.size(), 6u + 4 * 14) << icon;
    const unsigned kSizes[] = {16, 24, 32, 48};
    for (std::size_t i = 0; i < std::size(kSizes); ++i) {
      const Bytes entry = group.subspan(6 + i * 14, 14);
      EXPECT_EQ(NumberAt(entry, 0, 1), kSizes[i]);
      const auto number = static_cast<std::uint16_t>(NumberAt(entry, 12, 2));
      const Bytes image = platform::FindResourceBytes(kIcon, number, kEnglish);
      ASSERT_EQ(image.size(), NumberAt(entry, 8, 4)) << icon;
      EXPECT_EQ(NumberAt(image, 4, 4), kSizes[i]);      // width
      EXPECT_EQ(NumberAt(image, 8, 4), kSizes[i] * 2);  // height of colours and mask
      EXPECT_EQ(NumberAt(image, 14, 2), 32u);           // bits of a pixel
    }
  }
}

TEST(Images, BitmapsHaveTheSizesThatTheirPlacesLeave) {
  const struct {
    int number;
    unsigned width, height;
  } cases[] = {
      {IDB_LOGON_BANNER, 367, 74}, {IDB_WIZARD_WATERMARK, 164, 314}, {IDB_WIZARD_HEADER, 49, 49}};
  for (const auto& each : cases) {
    const Bytes bitmap =
        platform::FindResourceBytes(kBitmap, static_cast<std::uint16_t>(each.number), kEnglish);
    ASSERT_GT(bitmap.size(), 40u) << each.number;
    EXPECT_EQ(NumberAt(bitmap, 4, 4), each.width);
    EXPECT_EQ(NumberAt(bitmap, 8, 4), each.height);
    EXPECT_EQ(NumberAt(bitmap, 14, 2), 24u);
  }
}

class Banner : public testing::Test {
 protected:
  static constexpr unsigned kWidth = 367;
  static constexpr unsigned kHeight = 74;

  // Blue, green and red, from the lowest byte; rows from the top.
  unsigned Pixel(unsigned x, unsigned y) const {
    constexpr std::size_t kStride = (kWidth * 3 + 3) / 4 * 4;
    return NumberAt(bytes_, 40 + (kHeight - 1 - y) * kStride + x * 3, 3);
  }

  // Relative luminance (WCAG 2).
  static double Luminance(unsigned pixel) {
    const auto linear = [&](unsigned shift) {
      const double value = ((pixel >> shift) & 0xFF) / 255.0;
      return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.0722 * linear(0) + 0.7152 * linear(8) + 0.2126 * linear(16);
  }

  Bytes bytes_ = platform::FindResourceBytes(kBitmap, IDB_LOGON_BANNER, kEnglish);
};

// A wider dialog repeats the last column, which must not be seen as stripes.
TEST_F(Banner, ContinuesEvenlyAtItsRightEdge) {
  for (unsigned y = 0; y < kHeight; ++y) {
    for (unsigned x = kWidth - 16; x < kWidth; ++x)
      ASSERT_EQ(Pixel(x, y), Pixel(kWidth - 1, y)) << x << ", " << y;
  }
}

TEST_F(Banner, IsDarkWhereWhiteTextIsWrittenOnIt) {
  for (unsigned y = 12; y < 60; ++y) {
    for (unsigned x = 160; x < kWidth; ++x)
      ASSERT_GE(1.05 / (Luminance(Pixel(x, y)) + 0.05), 4.5) << x << ", " << y;
  }
}

}  // namespace
