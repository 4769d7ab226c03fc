// The result of a statement. Every value is text; callers convert numbers themselves.
#pragma once

#include <string>
#include <vector>

namespace quillgate {

// One text for each column, in the statement's column order; NULL reads as an empty text.
using DbRow = std::vector<std::wstring>;
// In the order in which the engine returns them.
using DbRows = std::vector<DbRow>;

}  // namespace quillgate
