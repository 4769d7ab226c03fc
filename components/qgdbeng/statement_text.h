// Checks whether a text is one SQL statement before any of it is compiled, since some statements
// take effect when they are compiled.
#pragma once

#include <string_view>

namespace quillgate::engine {

// Whether the first statement is followed by anything but blanks, comments and semicolons.
bool HoldsMoreThanOneStatement(std::string_view sql);

// Whether the statement only reads or changes rows, and so can be compiled once and run often.
bool IsRowStatement(std::string_view sql);

}  // namespace quillgate::engine
