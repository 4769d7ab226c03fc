// The tokens of a script as its statements are read: one ahead, with the checks that every
// statement needs. Keywords are the same in any case.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/tools/rescomp/script_tokens.h"

namespace rescomp {

class TokenStream {
 public:
  explicit TokenStream(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}

  const Token& Peek() const { return tokens_[next_]; }
  Token Take();
  bool AtEnd() const { return Peek().kind == TokenKind::kEnd; }
  [[noreturn]] void Fail(const std::string& what) const;

  // Takes the next token if it is this word or symbol.
  bool Accept(std::string_view text);
  void Expect(std::string_view text);
  // BEGIN or '{', END or '}'.
  bool AcceptBegin() { return Accept("BEGIN") || Accept("{"); }
  bool AcceptEnd() { return Accept("END") || Accept("}"); }

  // Numbers joined by + - | & with ~, unary minus and parentheses, from left to right.
  std::uint32_t Number();
  std::uint16_t Number16();
  // One number, or an expression in parentheses.
  std::uint32_t Operand();
  std::string String();
  std::u16string WideString();

 private:
  std::vector<Token> tokens_;
  std::size_t next_ = 0;
};

bool EqualKeywords(std::string_view left, std::string_view right);

}  // namespace rescomp
