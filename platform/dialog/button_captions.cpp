#include "platform/dialog/button_captions.h"

#include <algorithm>
#include <array>

#include "platform/kernel/locale_source.h"

namespace platform {
namespace {

struct Caption {
  int id;
  const wchar_t* english;
  const wchar_t* swedish;
};

constexpr std::array kCaptions = {
    Caption{IDOK, L"OK", L"OK"},
    Caption{IDCANCEL, L"Cancel", L"Avbryt"},
    Caption{IDABORT, L"&Abort", L"&Avbryt"},
    Caption{IDRETRY, L"&Retry", L"&Försök igen"},
    Caption{IDIGNORE, L"&Ignore", L"&Ignorera"},
    Caption{IDYES, L"&Yes", L"&Ja"},
    Caption{IDNO, L"&No", L"&Nej"},
    Caption{kApplyButton, L"&Apply", L"&Verkställ"},
    Caption{kBackButton, L"< &Back", L"< &Bakåt"},
    Caption{kNextButton, L"&Next >", L"&Nästa >"},
    Caption{kFinishButton, L"&Finish", L"&Slutför"},
};

}  // namespace

std::wstring ButtonCaption(int id) {
  const auto* caption = std::ranges::find(kCaptions, id, &Caption::id);
  if (caption == kCaptions.end()) return {};
  const bool inSwedish = PRIMARYLANGID(CurrentLanguage()) == LANG_SWEDISH;
  return inSwedish ? caption->swedish : caption->english;
}

}  // namespace platform
