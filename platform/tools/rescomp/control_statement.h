// The statements of controls inside a dialog, and the expressions that they share with it.
#pragma once

#include "platform/tools/rescomp/dialog_template.h"
#include "platform/tools/rescomp/token_stream.h"

namespace rescomp {

// One control, from its keyword on. Throws SourceError for an unknown keyword.
DialogItem ReadControlStatement(TokenStream& tokens);

// x, y, width, height
TemplateRect ReadRect(TokenStream& tokens);

// Bits joined by '|', each of which may be taken away by NOT, applied to those that are set
// already.
std::uint32_t ReadStyle(TokenStream& tokens, std::uint32_t style);

}  // namespace rescomp
