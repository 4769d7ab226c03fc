#include "platform/gdi/resource_fixture.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <utility>
#include <vector>

#include "platform/kernel/resources.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr WORD kBitmapType = 2;
constexpr WORD kIconType = 3;
constexpr WORD kIconGroupType = 14;

// As files have them: blue first, alpha last.
constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGreen = 0xFF00FF00;
constexpr std::uint32_t kBlue = 0xFF0000FF;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;
constexpr std::uint32_t kYellow = 0xFFFFFF00;

void Append(Bytes& bytes, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i)
    bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
}

Bytes Header(int width, int height, int bitCount, std::uint32_t colours) {
  Bytes bytes;
  Append(bytes, 40, 4);
  Append(bytes, static_cast<std::uint32_t>(width), 4);
  Append(bytes, static_cast<std::uint32_t>(height), 4);
  Append(bytes, 1, 2);
  Append(bytes, static_cast<std::uint32_t>(bitCount), 2);
  for (int i = 0; i < 4; ++i)
    Append(bytes, 0, 4);
  Append(bytes, colours, 4);
  Append(bytes, 0, 4);
  return bytes;
}

Bytes operator+(Bytes one, const Bytes& other) {
  one.insert(one.end(), other.begin(), other.end());
  return one;
}

// The lower row first; the rows of 24 bits are filled up to eight bytes.
Bytes Rows24(const std::array<std::uint32_t, 4>& lowerFirst) {
  Bytes bytes;
  for (std::size_t i = 0; i < lowerFirst.size(); ++i) {
    Append(bytes, lowerFirst[i], 3);
    if (i % 2 == 1) Append(bytes, 0, 2);
  }
  return bytes;
}

Bytes Rows32(const std::array<std::uint32_t, 4>& lowerFirst, bool alpha) {
  Bytes bytes;
  for (const std::uint32_t pixel : lowerFirst)
    Append(bytes, alpha ? pixel : pixel & 0xFFFFFF, 4);
  return bytes;
}

Bytes Palette(const std::vector<std::uint32_t>& colours) {
  Bytes bytes;
  for (const std::uint32_t colour : colours)
    Append(bytes, colour & 0xFFFFFF, 4);
  return bytes;
}

const Bytes kColours4 = Palette({kRed, kGreen, kBlue, kWhite});
const Bytes kRowsOf8 = {2, 3, 0, 0, 0, 1, 0, 0};
const Bytes kRowsOf4 = {0x23, 0, 0, 0, 0x01, 0, 0, 0};
const Bytes kIconRowsOf8 = {1, 2, 0, 0, 0, 3, 0, 0};
const Bytes kIconRowsOf4 = {0x12, 0, 0, 0, 0x03, 0, 0, 0};
const Bytes kRowsOf1 = {0x80, 0, 0, 0, 0x40, 0, 0, 0};
// Leaves out the upper right pixel; what stands there does not show.
const Bytes kMask = {0, 0, 0, 0, 0x40, 0, 0, 0};
const Bytes kNoMask = {0, 0, 0, 0, 0, 0, 0, 0};

const Bytes kPng = {
    0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 0x49, 0x48, 0x44, 0x52,
    0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x02, 0x08, 0x06, 0x00, 0x00, 0x00, 0x72, 0xB6, 0x0D,
    0x24, 0x00, 0x00, 0x00, 0x16, 0x49, 0x44, 0x41, 0x54, 0x78, 0xDA, 0x63, 0xF8, 0xCF, 0xC0, 0xF0,
    0x9F, 0x93, 0x93, 0x93, 0x01, 0x48, 0x31, 0x80, 0xD8, 0xFF, 0x01, 0x2F, 0x28, 0x06, 0x16, 0xB7,
    0xC1, 0x77, 0x4C, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82};

// A square of one colour with 24 bits, or with 4 from a palette of 16.
Bytes Square(int side, int bitCount, std::uint32_t colour) {
  Bytes bytes = Header(side, 2 * side, bitCount, 0);
  if (bitCount == 4) bytes = std::move(bytes) + Palette(std::vector(16, colour));
  const int rowBytes = side * bitCount / 8;
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side && bitCount == 24; ++x)
      Append(bytes, colour, 3);
    if (bitCount == 4) bytes.resize(bytes.size() + static_cast<std::size_t>(rowBytes));
  }
  bytes.resize(bytes.size() + static_cast<std::size_t>((side + 31) / 32 * 4 * side));
  return bytes;
}

struct Picture {
  int side;
  int bitCount;
  WORD number;
};

Bytes Group(const std::vector<Picture>& pictures) {
  Bytes bytes;
  Append(bytes, 0, 2);
  Append(bytes, 1, 2);
  Append(bytes, static_cast<std::uint32_t>(pictures.size()), 2);
  for (const Picture& each : pictures) {
    Append(bytes, static_cast<std::uint32_t>(each.side), 1);
    Append(bytes, static_cast<std::uint32_t>(each.side), 1);
    Append(bytes, 0, 2);
    Append(bytes, 1, 2);
    Append(bytes, static_cast<std::uint32_t>(each.bitCount), 2);
    Append(bytes, 0, 4);
    Append(bytes, each.number, 2);
  }
  return bytes;
}

class Registration {
 public:
  Registration() {
    AddBitmaps();
    AddIcons();
    AddSizes();
    std::vector<platform::Resource> resources;
    for (const auto& [type, name, bytes] : entries_)
      resources.push_back({type, name, 0x409, std::as_bytes(std::span(bytes))});
    platform::RegisterResources(resources);
  }

 private:
  struct Entry {
    WORD type;
    WORD name;
    Bytes bytes;
  };

  void Add(WORD type, WORD name, Bytes bytes) {
    entries_.push_back({type, name, std::move(bytes)});
  }
  // An icon of one picture.
  void AddIcon(WORD name, int bitCount, Bytes bytes) {
    Add(kIconType, name, std::move(bytes));
    Add(kIconGroupType, name, Group({{2, bitCount, name}}));
  }
  void AddBitmaps();
  void AddIcons();
  void AddSizes();

  std::deque<Entry> entries_;
};

void Registration::AddBitmaps() {
  constexpr std::array kLowerFirst = {kBlue, kWhite, kRed, kGreen};
  constexpr std::array kUpperFirst = {kRed, kGreen, kBlue, kWhite};
  Add(kBitmapType, kBitmap24, Header(2, 2, 24, 0) + Rows24(kLowerFirst));
  Add(kBitmapType, kBitmapFromTop, Header(2, -2, 24, 0) + Rows24(kUpperFirst));
  Add(kBitmapType, kBitmap32, Header(2, 2, 32, 0) + Rows32(kLowerFirst, false));
  Add(kBitmapType, kBitmap8, Header(2, 2, 8, 4) + kColours4 + kRowsOf8);
  Add(kBitmapType, kBitmap4, Header(2, 2, 4, 4) + kColours4 + kRowsOf4);
  Add(kBitmapType, kBitmap1, Header(2, 2, 1, 0) + Palette({0, kYellow}) + kRowsOf1);
  Bytes cut = Header(2, 2, 24, 0) + Rows24(kLowerFirst);
  cut.pop_back();
  Add(kBitmapType, kBitmapCut, std::move(cut));
}

void Registration::AddIcons() {
  constexpr std::array kRows = {kGreen, kBlue, kRed, kWhite};
  constexpr std::array kAlphaRows = {kGreen, kBlue, kRed, 0x00FFFFFFu};
  AddIcon(kIconPng, 32, kPng);
  AddIcon(kIconAlpha, 32, Header(2, 4, 32, 0) + Rows32(kAlphaRows, true) + kNoMask);
  AddIcon(kIconMask32, 32, Header(2, 4, 32, 0) + Rows32(kRows, false) + kMask);
  AddIcon(kIconMask24, 24, Header(2, 4, 24, 0) + Rows24(kRows) + kMask);
  AddIcon(kIconMask8, 8, Header(2, 4, 8, 4) + kColours4 + kIconRowsOf8 + kMask);
  AddIcon(kIconMask4, 4, Header(2, 4, 4, 4) + kColours4 + kIconRowsOf4 + kMask);
  AddIcon(kIconMask1, 1, Header(2, 4, 1, 0) + Palette({0, kYellow}) + kRowsOf1 + kMask);
  AddIcon(kIconCut, 32, Header(2, 4, 32, 0) + Rows32(kRows, true));
}

void Registration::AddSizes() {
  Add(kIconType, 301, Square(16, 4, kBlue));
  Add(kIconType, 302, Square(32, 24, kGreen));
  Add(kIconType, 303, Square(16, 24, kRed));
  Add(kIconGroupType, kIconSizes, Group({{16, 4, 301}, {32, 24, 302}, {16, 24, 303}}));
}

}  // namespace

void RegisterImageResources() {
  static const Registration& registration = *new Registration;
  static_cast<void>(registration);
}
