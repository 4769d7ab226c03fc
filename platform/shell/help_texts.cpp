#include "platform/shell/help_texts.h"

namespace platform {
namespace {

constexpr HelpTexts kEnglish = {
    .help = L"Help",
    .back = L"Back",
    .forward = L"Forward",
    .home = L"Home",
    .contents = L"Contents",
    .search = L"Search",
    .words = L"Words to search for:",
    .nothingFound = L"No topic contains these words.",
    .outside = L"This link leads out of the help and is not opened: ",
    .missingTitle = L"Topic not found",
    .missingText = L"The help does not contain this topic:",
};

constexpr HelpTexts kSwedish = {
    .help = L"Hjälp",
    .back = L"Bakåt",
    .forward = L"Framåt",
    .home = L"Startsida",
    .contents = L"Innehåll",
    .search = L"Sök",
    .words = L"Ord att söka efter:",
    .nothingFound = L"Inget avsnitt innehåller de orden.",
    .outside = L"Länken leder ut ur hjälpen och öppnas inte: ",
    .missingTitle = L"Avsnittet hittades inte",
    .missingText = L"Hjälpen innehåller inte det här avsnittet:",
};

}  // namespace

const HelpTexts& HelpTextsIn(LANGID language) {
  return PRIMARYLANGID(language) == LANG_SWEDISH ? kSwedish : kEnglish;
}

}  // namespace platform
