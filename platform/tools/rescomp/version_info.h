// The VERSIONINFO statement and its binary form, VS_VERSIONINFO: a tree of nodes with a key each,
// UTF-16, aligned to four bytes.
#pragma once

#include "platform/tools/rescomp/byte_writer.h"
#include "platform/tools/rescomp/token_stream.h"

namespace rescomp {

// Reads what follows the word VERSIONINFO up to its END. Throws SourceError.
Bytes CompileVersionInfo(TokenStream& tokens);

}  // namespace rescomp
