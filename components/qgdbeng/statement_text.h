// Whether a text is one SQL statement, told before any of it is compiled: some statements take
// effect when they are compiled already.
#pragma once

#include <string_view>

namespace quillgate::engine {

// Whether anything but blanks, comments and semicolons follows the first statement.
bool HoldsMoreThanOneStatement(std::string_view sql);

// Whether it reads or changes rows and nothing else, and so can be compiled once and run often.
bool IsRowStatement(std::string_view sql);

}  // namespace quillgate::engine
