// Reads numbers and structures from the bytes of a resource. The file formats and this machine are
// little-endian. Any thread.
#pragma once

#include <cstddef>
#include <cstring>
#include <optional>
#include <span>

namespace platform {

using ByteView = std::span<const std::byte>;

// The structure at that offset; nothing when the bytes end before the structure does.
template <class T>
std::optional<T> ReadAt(ByteView bytes, std::size_t offset) {
  if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) return std::nullopt;
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

}  // namespace platform
