#include "platform/tools/rescomp/byte_writer.h"

namespace rescomp {

namespace {

struct Sequence {
  unsigned length;
  char32_t lowest;  // smaller values need fewer bytes: an overlong form
  std::uint8_t leadBits;
};

std::optional<Sequence> SequenceOf(std::uint8_t lead) {
  if (lead < 0x80) return Sequence{1, 0, 0x7F};
  if ((lead & 0xE0) == 0xC0) return Sequence{2, 0x80, 0x1F};
  if ((lead & 0xF0) == 0xE0) return Sequence{3, 0x800, 0x0F};
  if ((lead & 0xF8) == 0xF0) return Sequence{4, 0x10000, 0x07};
  return std::nullopt;
}

// Takes one character off the front of the text.
std::optional<char32_t> TakeCharacter(std::string_view& utf8) {
  const auto lead = static_cast<std::uint8_t>(utf8.front());
  const auto sequence = SequenceOf(lead);
  if (!sequence || utf8.size() < sequence->length) return std::nullopt;
  char32_t value = lead & sequence->leadBits;
  for (unsigned i = 1; i < sequence->length; ++i) {
    const auto next = static_cast<std::uint8_t>(utf8[i]);
    if ((next & 0xC0) != 0x80) return std::nullopt;
    value = (value << 6) | (next & 0x3F);
  }
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (value < sequence->lowest || value > 0x10FFFF || surrogate) return std::nullopt;
  utf8.remove_prefix(sequence->length);
  return value;
}

}  // namespace

void ByteWriter::Put16(std::uint16_t value) {
  bytes_.push_back(static_cast<std::uint8_t>(value & 0xFF));
  bytes_.push_back(static_cast<std::uint8_t>(value >> 8));
}

void ByteWriter::Put32(std::uint32_t value) {
  Put16(static_cast<std::uint16_t>(value & 0xFFFF));
  Put16(static_cast<std::uint16_t>(value >> 16));
}

void ByteWriter::PutBytes(std::string_view bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

void ByteWriter::PutBytes(const Bytes& bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

void ByteWriter::PutText(std::u16string_view text) {
  for (const char16_t unit : text)
    Put16(unit);
  Put16(0);
}

void ByteWriter::AlignTo4() {
  while (bytes_.size() % 4 != 0)
    bytes_.push_back(0);
}

void ByteWriter::Set16(std::size_t offset, std::uint16_t value) {
  bytes_.at(offset) = static_cast<std::uint8_t>(value & 0xFF);
  bytes_.at(offset + 1) = static_cast<std::uint8_t>(value >> 8);
}

std::optional<std::u16string> Utf16(std::string_view utf8) {
  std::u16string result;
  while (!utf8.empty()) {
    const auto character = TakeCharacter(utf8);
    if (!character) return std::nullopt;
    if (*character < 0x10000) {
      result.push_back(static_cast<char16_t>(*character));
    } else {
      result.push_back(static_cast<char16_t>(0xD800 + ((*character - 0x10000) >> 10)));
      result.push_back(static_cast<char16_t>(0xDC00 + ((*character - 0x10000) & 0x3FF)));
    }
  }
  return result;
}

}  // namespace rescomp
