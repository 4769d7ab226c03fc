#include "platform/gdi/resource_fixture.h"

#include <span>
#include <vector>

#include "platform/kernel/resources.h"

namespace {

using Bytes = std::vector<std::byte>;
using Pixels = std::vector<DWORD>;

constexpr WORD kBitmapType = 2;
constexpr WORD kIconType = 3;
constexpr WORD kIconGroupType = 14;

// As files have them: blue first, alpha last.
constexpr DWORD kRed = 0xFFFF0000;
constexpr DWORD kGreen = 0xFF00FF00;
constexpr DWORD kBlue = 0xFF0000FF;

template <class Unit>
Bytes BytesOf(const std::vector<Unit>& units) {
  const auto bytes = std::as_bytes(std::span(units));
  return {bytes.begin(), bytes.end()};
}

Bytes operator+(Bytes one, const Bytes& other) {
  one.insert(one.end(), other.begin(), other.end());
  return one;
}

Bytes Header(int width, int height, DWORD bitCount, DWORD colours) {
  return BytesOf<DWORD>({40, static_cast<DWORD>(width), static_cast<DWORD>(height),
                         1 | bitCount << 16, 0, 0, 0, 0, colours, 0});
}

const Pixels kPng = {0x474E5089, 0x0A1A0A0D, 0x0D000000, 0x52444849, 0x02000000,
                     0x02000000, 0x00000608, 0x0DB67200, 0x00000024, 0x41444916,
                     0x63DA7854, 0xF0C0CFF8, 0x9393939F, 0x80314801, 0x2F01FFD8,
                     0xB7160628, 0x004C77C1, 0x49000000, 0xAE444E45, 0x00826042};

// A square of one colour, and its mask.
Bytes Square(std::size_t side, DWORD colour) {
  const int width = static_cast<int>(side);
  return Header(width, 2 * width, 32, 0) + BytesOf(Pixels(side * side, colour)) + Bytes(4 * side);
}

struct Picture {
  int side, bitCount, number;
};

Bytes Group(const std::vector<Picture>& pictures) {
  std::vector<WORD> words = {0, 1, static_cast<WORD>(pictures.size())};
  for (const auto& [side, bitCount, number] : pictures) {
    for (const int word : {side | side << 8, 0, 1, bitCount, 0, 0, number})
      words.push_back(static_cast<WORD>(word));
  }
  return BytesOf(words);
}

struct Entry {
  WORD type, name;
  Bytes bytes;
};

std::vector<Entry> Entries() {
  const Bytes bitmap24 = Header(2, 2, 24, 0);
  // Rows of two pixels, filled up to eight bytes.
  const Bytes rows24 = BytesOf<DWORD>({0xFF0000FF, 0xFFFF, 0x00FF0000, 0x00FF});
  const Bytes palette = BytesOf<DWORD>({0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF});
  const Bytes rows8 = BytesOf<DWORD>({0x0302, 0x0100});
  const Bytes icon32 = Header(2, 4, 32, 0);
  const Bytes rows32 = BytesOf<DWORD>({kGreen, kBlue, kRed, 0x00FFFFFF});
  return {
      {kBitmapType, kBitmap24, bitmap24 + rows24},
      {kBitmapType, kBitmapPalette, Header(2, 2, 8, 4) + palette + rows8},
      {kBitmapType, kBitmapCut, bitmap24},
      {kBitmapType, kBitmapEmpty, Header(0, 2, 24, 0)},
      {kIconType, kIconPng, BytesOf(kPng)},
      {kIconType, kIconAlpha, icon32 + rows32 + Bytes(8)},
      {kIconType, kIconCut, icon32},
      {kIconType, 301, Square(16, kBlue)},
      {kIconType, 302, Square(32, kGreen)},
      {kIconType, 303, Square(16, kRed)},
      {kIconGroupType, kIconPng, Group({{2, 32, kIconPng}})},
      {kIconGroupType, kIconAlpha, Group({{2, 32, kIconAlpha}})},
      {kIconGroupType, kIconCut, Group({{2, 32, kIconCut}})},
      {kIconGroupType, kIconSizes, Group({{16, 4, 301}, {32, 32, 302}, {16, 32, 303}})},
  };
}

}  // namespace

void RegisterImageResources() {
  static const auto& entries = *[] {
    const auto* const made = new std::vector<Entry>(Entries());
    for (const auto& [type, name, bytes] : *made) {
      const platform::Resource resource = {type, name, 0x409, bytes};
      platform::RegisterResources({&resource, 1});
    }
    return made;
  }();
  static_cast<void>(entries);
}
