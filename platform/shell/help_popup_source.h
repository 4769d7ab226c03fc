// The source of popup texts in compiled help: lines ".topic NUMBER", each followed by its text. Any
// thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// The text of that number. Its lines are joined with spaces; an empty line begins a new paragraph,
// for which the text has a line break. Nothing when there is no such number or its text is empty.
std::optional<std::wstring> FindPopupText(std::wstring_view source, std::uint32_t number);

}  // namespace platform
