// The help viewer's own texts. Any thread.
#pragma once

#include <windows.h>

#include <string_view>

namespace platform {

struct HelpTexts {
  std::wstring_view help;  // the title of a window without another one
  std::wstring_view back;
  std::wstring_view forward;
  std::wstring_view home;
  std::wstring_view contents;
  std::wstring_view search;
  std::wstring_view words;  // label of the field for the words to search for
  std::wstring_view nothingFound;
  std::wstring_view outside;       // stands before the address of a link that is not followed
  std::wstring_view missingTitle;  // the page in the place of a missing topic
  std::wstring_view missingText;
};

// In Swedish for Swedish, else in English.
const HelpTexts& HelpTextsIn(LANGID language);

}  // namespace platform
