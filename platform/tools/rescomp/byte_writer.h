// Builds the bytes of one resource: little-endian numbers and texts, aligned as the formats want.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rescomp {

using Bytes = std::vector<std::uint8_t>;

class ByteWriter {
 public:
  std::size_t Size() const { return bytes_.size(); }
  void Put16(std::uint16_t value);
  void Put32(std::uint32_t value);
  void PutBytes(std::string_view bytes);
  void PutBytes(const Bytes& bytes);
  // UTF-16 with a terminating null.
  void PutText(std::u16string_view text);
  void AlignTo4();
  // Overwrites two bytes that were put before.
  void Set16(std::size_t offset, std::uint16_t value);
  Bytes Take() { return std::move(bytes_); }

 private:
  Bytes bytes_;
};

// Nothing when the text is not well-formed UTF-8.
std::optional<std::u16string> Utf16(std::string_view utf8);

}  // namespace rescomp
