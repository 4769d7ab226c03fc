// Reads numbers from the bytes of a resource. Little-endian, as the file formats and this machine
// are. Any thread.
#pragma once

#include <cstddef>
#include <cstring>
#include <optional>
#include <span>

namespace platform {

using ByteView = std::span<const std::byte>;

// The structure at that place; nothing when the bytes end before it does.
template <class T>
std::optional<T> ReadAt(ByteView bytes, std::size_t offset) {
  if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) return std::nullopt;
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

}  // namespace platform
