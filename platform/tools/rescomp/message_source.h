// Reads the message compiler's source (.mc): UTF-8, lines ended by LF or CR LF. Understood are
// MessageIdTypedef, LanguageNames, MessageId, SymbolicName, Language, the text up to a line that
// holds a single dot, and comment lines that begin with a semicolon.
#pragma once

#include <istream>
#include <string>
#include <vector>

#include "platform/tools/rescomp/message_table.h"

namespace rescomp {

// One table for each language, in the order of LanguageNames. Throws SourceError: for what is not
// understood, a number that comes twice or a number that one of the languages lacks.
std::vector<MessageTable> ReadMessageSource(std::istream& source, const std::string& fileName);

// The resource script that gives the tables' files to the resource compiler: message-table
// resources with the name 1.
std::string MessageTableScript(const std::vector<MessageTable>& tables);

}  // namespace rescomp
