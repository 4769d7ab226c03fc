// Where Back and Next lead in the setup wizard. A page is the number of its template. Pure.
#pragma once

#include <optional>

#include "accounts/logon_system.h"

namespace quillgate {

// What the user has chosen on the way.
struct WizardChoices {
  bool isSimple = true;
  LogonSystem system = LogonSystem::kNone;  // on the logon system page
};

// Nullopt: the button leads nowhere from that page.
std::optional<unsigned> NextPage(unsigned page, const WizardChoices& choices);
std::optional<unsigned> PreviousPage(unsigned page, const WizardChoices& choices);

}  // namespace quillgate
