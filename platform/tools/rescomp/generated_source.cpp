#include "platform/tools/rescomp/generated_source.h"

namespace rescomp {

namespace {

// Aligned as the structures inside want to be read.
void WriteBytes(std::ostream& out, std::size_t which, const Bytes& data) {
  constexpr std::size_t kBytesPerLine = 24;
  out << "alignas(8) const unsigned char kData" << which << "[] = {";
  for (std::size_t i = 0; i < data.size(); ++i) {
    out << (i % kBytesPerLine == 0 ? "\n  " : "") << static_cast<unsigned>(data[i]) << ',';
  }
  out << "\n};\n\n";
}

}  // namespace

void WriteSource(std::ostream& out, std::span<const CompiledResource> resources) {
  out << "// Made by the resource compiler.\n#include \"platform/kernel/resources.h\"\n\n"
         "namespace {\n\n";
  for (std::size_t i = 0; i < resources.size(); ++i)
    WriteBytes(out, i, resources[i].data);
  out << "const platform::Resource kResources[] = {\n";
  for (std::size_t i = 0; i < resources.size(); ++i) {
    const CompiledResource& resource = resources[i];
    out << "    {" << resource.type << ", " << resource.name << ", " << resource.language
        << ", std::as_bytes(std::span(kData" << i << "))},\n";
  }
  out << "};\n\n[[maybe_unused]] const bool kRegistered =\n"
         "    (platform::RegisterResources(kResources), true);\n\n}  // namespace\n";
}

}  // namespace rescomp
