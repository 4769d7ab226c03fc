#include "platform/kernel/resource_file.h"

#include "platform/kernel/log.h"

namespace platform {
namespace {

// The parts of RESOURCEHEADER. Type and name are numbers here; as strings they are not supported.
struct HeaderSizes {
  std::uint32_t data;
  std::uint32_t header;
};
struct NumberedIdentity {
  std::uint16_t typeMark;  // kNumberMark
  std::uint16_t type;
  std::uint16_t nameMark;  // kNumberMark
  std::uint16_t name;
  std::uint32_t dataVersion;
  std::uint16_t memoryFlags;
  LANGID language;
};
constexpr std::uint16_t kNumberMark = 0xFFFF;
constexpr std::uint32_t kShortestHeader = sizeof(HeaderSizes) + sizeof(NumberedIdentity) + 8;

constexpr std::size_t AlignedTo4(std::size_t offset) {
  return (offset + 3) & ~std::size_t{3};
}

bool HasNumbers(const NumberedIdentity& identity) {
  return identity.typeMark == kNumberMark && identity.nameMark == kNumberMark;
}

}  // namespace

std::vector<Resource> ReadResourceFile(ByteView file) {
  std::vector<Resource> resources;
  std::size_t offset = 0;
  while (offset < file.size()) {
    const auto sizes = ReadAt<HeaderSizes>(file, offset);
    const auto identity = ReadAt<NumberedIdentity>(file, offset + sizeof(HeaderSizes));
    const std::size_t left = file.size() - offset;
    if (!sizes || !identity || sizes->header < kShortestHeader || sizes->header > left ||
        sizes->data > left - sizes->header) {
      LogLine("a file of compiled resources is damaged");
      break;
    }
    const ByteView data = file.subspan(offset + sizes->header, sizes->data);
    if (!HasNumbers(*identity)) {
      LogLine("a compiled resource that has no number is left out");
    } else if (identity->type != 0) {  // the file's first header is an empty marker
      resources.push_back({identity->type, identity->name, identity->language, data});
    }
    offset += AlignedTo4(sizes->header + sizes->data);
  }
  return resources;
}

}  // namespace platform
