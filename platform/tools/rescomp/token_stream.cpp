#include "platform/tools/rescomp/token_stream.h"

#include <algorithm>
#include <cctype>

#include "platform/tools/rescomp/byte_writer.h"

namespace rescomp {

bool EqualKeywords(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, [](unsigned char a, unsigned char b) {
    return std::toupper(a) == std::toupper(b);
  });
}

Token TokenStream::Take() {
  Token token = Peek();
  if (!AtEnd()) ++next_;
  return token;
}

void TokenStream::Fail(const std::string& what) const {
  throw SourceError(Peek().place, what);
}

bool TokenStream::Accept(std::string_view text) {
  const Token& token = Peek();
  const bool matches = (token.kind == TokenKind::kWord || token.kind == TokenKind::kSymbol) &&
                       EqualKeywords(token.text, text);
  if (matches) ++next_;
  return matches;
}

void TokenStream::Expect(std::string_view text) {
  if (!Accept(text)) {
    Fail("'" + std::string(text) + "' is expected before '" + Peek().text + "'");
  }
}

std::uint32_t TokenStream::Operand() {
  if (Accept("~")) return ~Operand();
  if (Accept("-")) return 0 - Operand();
  if (Accept("(")) {
    const std::uint32_t value = Number();
    Expect(")");
    return value;
  }
  if (Peek().kind != TokenKind::kNumber) {
    Fail("a number is expected before '" + Peek().text + "'");
  }
  return Take().number;
}

std::uint32_t TokenStream::Number() {
  std::uint32_t value = Operand();
  while (true) {
    if (Accept("+")) {
      value += Operand();
    } else if (Accept("-")) {
      value -= Operand();
    } else if (Accept("|")) {
      value |= Operand();
    } else if (Accept("&")) {
      value &= Operand();
    } else {
      return value;
    }
  }
}

std::uint16_t TokenStream::Number16() {
  const Token first = Peek();
  const std::uint32_t value = Number();
  if (value > 0xFFFF) throw SourceError(first.place, "the number must fit in 16 bits");
  return static_cast<std::uint16_t>(value);
}

std::string TokenStream::String() {
  if (Peek().kind != TokenKind::kString) {
    Fail("a string is expected before '" + Peek().text + "'");
  }
  return Take().text;
}

std::u16string TokenStream::WideString() {
  // The tokens have been checked to be UTF-8.
  return Utf16(String()).value_or(std::u16string());
}

}  // namespace rescomp
