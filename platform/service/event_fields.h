// What the text of an event tells a machine. The first line says what kind of event it is, up to
// its first colon or the end of its first sentence: "Database error: no such table" is a "Database
// error". The lines after it, of the form "Name: value", are the event's data. Pure.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

// The number of the event's kind, in 32 hexadecimal digits: the same for the same kind everywhere
// and always. A catalogue that explains events computes it from their kinds too.
std::string EventKindId(std::string_view text);

// The names as fields of the journal ("User" is "EVENT_USER"), with their values. Other lines are
// left out.
std::vector<std::pair<std::string, std::string>> EventData(std::string_view text);

}  // namespace platform
