#include "platform/gdi/resource_fixture.h"

#include <deque>
#include <span>
#include <utility>
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
constexpr DWORD kWhite = 0xFFFFFFFF;

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

Bytes WithoutAlpha(Pixels pixels) {
  for (DWORD& each : pixels)
    each &= 0xFFFFFF;
  return BytesOf(pixels);
}

// The rows of two pixels are filled up to eight bytes.
Bytes Rows24(const Pixels& pixels) {
  Pixels rows;
  for (std::size_t i = 0; i < pixels.size(); i += 2) {
    rows.push_back((pixels[i] & 0xFFFFFF) | pixels[i + 1] << 24);
    rows.push_back(pixels[i + 1] >> 8 & 0xFFFF);
  }
  return BytesOf(rows);
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
  int side;
  int bitCount;
  WORD number;
};

Bytes Group(const std::vector<Picture>& pictures) {
  std::vector<WORD> words = {0, 1, static_cast<WORD>(pictures.size())};
  for (const auto& [side, bitCount, number] : pictures) {
    for (const int word : {side | side << 8, 0, 1, bitCount, 0, 0, int{number}})
      words.push_back(static_cast<WORD>(word));
  }
  return BytesOf(words);
}

struct Entry {
  WORD type;
  WORD name;
  Bytes bytes;
};

void AddBitmaps(std::deque<Entry>& entries) {
  const auto add = [&](WORD name, Bytes bytes) { entries.push_back({kBitmapType, name, bytes}); };
  const Bytes header = Header(2, 2, 24, 0);
  add(kBitmap24, header + Rows24({kBlue, kWhite, kRed, kGreen}));
  add(kBitmapPalette, Header(2, 2, 8, 4) + WithoutAlpha({kRed, kGreen, kBlue, kWhite}) +
                          BytesOf<DWORD>({0x0302, 0x0100}));
  add(kBitmapCut, header);
  add(kBitmapEmpty, Header(0, 2, 24, 0));
}

void AddIcons(std::deque<Entry>& entries) {
  // An icon of one picture.
  const auto add = [&](WORD name, int bitCount, Bytes bytes) {
    entries.push_back({kIconType, name, std::move(bytes)});
    entries.push_back({kIconGroupType, name, Group({{2, bitCount, name}})});
  };
  const Pixels rows = {kGreen, kBlue, kRed, 0x00FFFFFF};
  add(kIconPng, 32, BytesOf(kPng));
  add(kIconAlpha, 32, Header(2, 4, 32, 0) + BytesOf(rows) + Bytes(8));
  add(kIconCut, 32, Header(2, 4, 32, 0));
  entries.push_back({kIconType, 301, Square(16, kBlue)});
  entries.push_back({kIconType, 302, Square(32, kGreen)});
  entries.push_back({kIconType, 303, Square(16, kRed)});
  entries.push_back(
      {kIconGroupType, kIconSizes, Group({{16, 4, 301}, {32, 32, 302}, {16, 32, 303}})});
}

}  // namespace

void RegisterImageResources() {
  static const auto& entries = *[] {
    auto* const made = new std::deque<Entry>;
    AddBitmaps(*made);
    AddIcons(*made);
    for (const auto& [type, name, bytes] : *made) {
      const platform::Resource resource = {type, name, 0x409, bytes};
      platform::RegisterResources({&resource, 1});
    }
    return made;
  }();
  static_cast<void>(entries);
}
