// Resources that are linked into the executable: bytes by type, name and language. Read-only after
// start; any thread.
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

// Called before main runs. What the resources refer to must live for the whole process. The order
// of the calls is the order of enumeration.
void RegisterResources(std::span<const Resource> resources);

// Every language of one resource, in resource order.
std::vector<LANGID> ResourceLanguages(std::uint16_t type, std::uint16_t name);

// The bytes of one resource in exactly this language; empty when there is none.
std::span<const std::byte> FindResourceBytes(std::uint16_t type, std::uint16_t name,
                                             LANGID language);

// The same in the language that suits the system: without a language, in that of its interface, in
// that without a country, else the first there is. Empty, with ERROR_RESOURCE_TYPE_NOT_FOUND or
// ERROR_RESOURCE_NAME_NOT_FOUND as the last error, when there is none.
std::span<const std::byte> FindResourceBytes(std::uint16_t type, std::uint16_t name);

}  // namespace platform
