#include "settings/user_name.h"

#include <algorithm>

#include "accounts/user.h"

namespace quillgate {

bool IsAcceptableUserName(std::wstring_view name) {
  constexpr std::wstring_view kBlanks = L" \u00A0\u3000";
  const auto isControl = [](wchar_t each) {
    return each < L' ' || (each >= L'\x7F' && each < L'\xA0');
  };
  return name.find_first_not_of(kBlanks) != std::wstring_view::npos &&
         std::ranges::none_of(name, isControl) && IsStorableUserName(name);
}

}  // namespace quillgate
