// The unit of a service for systemd: its name and the text of its file. What a service may do is
// limited to what the layer needs for any service: its packet-filter drivers, the state in the root
// folder, files beside the program and, when it interacts with the desktop, a user's display. Pure.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/service/service_database.h"

namespace platform {

// "sample" for the service "Sample": without its suffix, in lower case, escaped as systemd does it.
std::string UnitStem(std::wstring_view serviceName);

// The first line of every unit file that the layer writes; others are not the layer's to change.
inline constexpr std::string_view kUnitMark = "# Made by CreateServiceW; DeleteService removes it.";

struct UnitParts {
  ServiceRecord record;
  std::vector<std::string> words;         // the program's absolute path, then its arguments
  std::filesystem::path root;             // the root folder
  std::filesystem::path workingFolder;    // below it
  std::filesystem::path environmentFile;  // read at each start when it exists
};
// No text of a service can add a directive.
std::string UnitText(const UnitParts& parts);

}  // namespace platform
