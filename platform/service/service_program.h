// The program of a service, as a keeper starts it: its command line and its environment. Any
// thread.
#pragma once

#include <windef.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/service/service_database.h"

namespace platform {

// The search path of services.
inline constexpr std::string_view kServicePath = "/usr/sbin:/usr/bin:/sbin:/bin";

// The program's absolute path and its arguments. Empty when the image path has no words. A program
// that is given by a relative path is searched for in the services' working directory.
std::vector<std::string> ProgramWords(const ServiceRecord& record);

// 0; ERROR_ACCESS_DENIED, and a line in the log, when others could change the program;
// ERROR_FILE_NOT_FOUND or another error when it cannot be examined.
DWORD RequireTrustedProgram(const ServiceRecord& record, const std::vector<std::string>& words);

// What a service gets of the environment of the process that starts it, as "NAME=value": language,
// time zone, display. All else is dropped, such as the search paths of libraries and plug-ins.
std::vector<std::string> PassedOnVariables();

}  // namespace platform
