// The DIALOGEX statement and the controls inside it. DIALOG is read the same way and gives the same
// binary form, which holds all that the older form did.
#pragma once

#include "platform/tools/rescomp/dialog_template.h"
#include "platform/tools/rescomp/token_stream.h"

namespace rescomp {

// Reads what follows the word DIALOGEX up to its END. Throws SourceError.
DialogTemplate ReadDialogStatement(TokenStream& tokens);

}  // namespace rescomp
