// Which names users may be given. Pure.
#pragma once

#include <string_view>

namespace quillgate {

// Whether the name can be seen and stored.
bool IsAcceptableUserName(std::wstring_view name);

}  // namespace quillgate
