// The text form of a hive, one line for each key and value, in UTF-8:
//
//   registry 1
//   [Software\Maker]
//   @="text of the default value"
//   "Name"="text, with \\ \" and \x0A for what cannot stand as it is"
//   "Path"=expand:"%SystemRoot%\\x"
//   "Number"=dword:0000002a
//   "Bytes"=hex(3):01,ff
//   end 6
//
// Every key has a line, after the one above it. The number at the end is that of the lines between
// the first and the last, so that a text that was cut off is known. Pure; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/registry/hive_key.h"

namespace platform {

std::string WriteHive(const HiveKey& root);

// Nothing when the text is not exactly of this form, names a key or a value twice, or was cut off.
std::optional<HiveKey> ReadHive(std::string_view text);

}  // namespace platform
