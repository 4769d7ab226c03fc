// Compiles a preprocessed resource script (.rc) to resources. Understood are LANGUAGE, VERSIONINFO,
// DIALOGEX, ICON, BITMAP and resources that are the contents of a file (MESSAGETABLE, RCDATA, or a
// type's number), with numbers for names.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/tools/rescomp/byte_writer.h"

namespace rescomp {

struct CompiledResource {
  std::uint16_t type = 0;
  std::uint16_t name = 0;
  std::uint16_t language = 0;
  Bytes data;
};

// In the order of the script; the images of an icon come before the icon, with numbers of their own
// from 1 on. Files are looked for in the folders, in their order. Throws
// SourceError: for what is not understood, a missing file, and a resource that comes twice.
std::vector<CompiledResource> CompileScript(std::string_view script, const std::string& fileName,
                                            std::span<const std::filesystem::path> folders);

}  // namespace rescomp
