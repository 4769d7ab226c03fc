// The text form of a hive, one line for each key and value, in UTF-8:
//
//   registry 1
//   [Software\Maker]
//   @="text of the default value"
//   "Name"="text, with the escapes \\ \" and \x0a"
//   "Path"=expand:"%SystemRoot%\\x"
//   "Number"=dword:0000002a
//   "Bytes"=hex(3):01,ff
//   end 6
//
// Every key has a line, which follows the line of its parent key. The number at the end counts the
// lines between the first and the last, so that a truncated text is detected. Pure; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/registry/hive_key.h"

namespace platform {

std::string WriteHive(const HiveKey& root);

// Nothing when the text is not exactly of this form, has a key or a value twice, or is truncated.
std::optional<HiveKey> ReadHive(std::string_view text);

}  // namespace platform
