// Splits a preprocessed resource script into tokens. Line markers of the C preprocessor
// ('# 12 "file" flags') give the places; what stands in C headers is passed over, since there only
// the preprocessor's own lines count for resources.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/tools/rescomp/source_error.h"

namespace rescomp {

enum class TokenKind { kNumber, kString, kWord, kSymbol, kEnd };

struct Token {
  TokenKind kind = TokenKind::kEnd;
  std::uint32_t number = 0;  // of kNumber
  std::string text;          // UTF-8; of kString with its escapes resolved
  SourcePlace place;
};

// The last token is kEnd. Throws SourceError.
std::vector<Token> ReadTokens(std::string_view script, const std::string& fileName);

}  // namespace rescomp
