// The resources that are linked into the executable: bytes by type, name and language. Read-only
// once main runs; then any thread.
#pragma once

#include <windef.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace platform {

struct Resource {
  std::uint16_t type;
  std::uint16_t name;
  LANGID language;
  std::span<const std::byte> data;
};

// To be called before main runs. The bytes must live as long as the process. The order of the calls
// is the order of enumeration.
void RegisterResources(std::span<const Resource> resources);

// Every language of one resource, in the order of enumeration.
std::vector<LANGID> ResourceLanguages(std::uint16_t type, std::uint16_t name);

// The bytes of one resource in exactly this language; empty when there is none.
std::span<const std::byte> FindResourceBytes(std::uint16_t type, std::uint16_t name,
                                             LANGID language);

// The same in the best language. In this order: language-neutral, the system's UI language, its
// primary language, the first one registered. Empty when there is none, with the last error
// ERROR_RESOURCE_TYPE_NOT_FOUND or ERROR_RESOURCE_NAME_NOT_FOUND.
std::span<const std::byte> FindResourceBytes(std::uint16_t type, std::uint16_t name);

}  // namespace platform
