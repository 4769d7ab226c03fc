#include "platform/tools/rescomp/script_tokens.h"

#include <cctype>
#include <charconv>
#include <sstream>

#include "platform/tools/rescomp/byte_writer.h"

namespace rescomp {

namespace {

bool IsDigit(char c) {
  return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

bool IsWordCharacter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

class TokenReader {
 public:
  TokenReader(std::string_view script, const std::string& fileName)
      : script_(script), place_{fileName, 0} {}

  std::vector<Token> Read();

 private:
  [[noreturn]] void Fail(const std::string& what) const { throw SourceError(place_, what); }
  bool NextLine();
  void ReadDirective();
  void ReadLineMarker();
  void CheckCodePage() const;
  void ReadLine();
  void ReadWord();
  void ReadString();
  void AppendEscape(std::string& text);
  void Add(TokenKind kind, std::string text, std::uint32_t number = 0) {
    tokens_.push_back({kind, number, std::move(text), place_});
  }

  std::string_view script_;  // what follows the current line
  std::string_view line_;    // what is left of it
  SourcePlace place_;
  bool inHeader_ = false;
  std::vector<Token> tokens_;
};

bool TokenReader::NextLine() {
  if (script_.empty()) return false;
  const std::size_t end = script_.find('\n');
  line_ = script_.substr(0, end);
  script_.remove_prefix(end == std::string_view::npos ? script_.size() : end + 1);
  if (line_.ends_with('\r')) line_.remove_suffix(1);
  ++place_.line;
  return true;
}

std::vector<Token> TokenReader::Read() {
  while (NextLine()) {
    if (line_.starts_with('#')) {
      ReadDirective();
    } else if (!inHeader_) {
      ReadLine();
    }
  }
  Add(TokenKind::kEnd, "");
  return std::move(tokens_);
}

void TokenReader::ReadDirective() {
  if (line_.size() > 2 && line_[1] == ' ' && IsDigit(line_[2])) {
    ReadLineMarker();
  } else if (line_.starts_with("#pragma code_page(")) {
    CheckCodePage();
  } else if (!line_.starts_with("#pragma ")) {
    Fail("'" + std::string(line_) + "' was left by the preprocessor");
  }
}

// # line "file" flags; the flag 3 marks a header of the system.
void TokenReader::ReadLineMarker() {
  const std::size_t open = line_.find('"');
  const std::size_t close = line_.rfind('"');
  if (open == std::string_view::npos || close == open) Fail("not a line marker");
  unsigned line = 0;
  std::from_chars(line_.data() + 2, line_.data() + line_.size(), line);
  place_.file = line_.substr(open + 1, close - open - 1);
  place_.line = line == 0 ? 0 : line - 1;  // the marker tells the number of the line after it
  const bool system = line_.find(" 3", close) != std::string_view::npos;
  inHeader_ = system || place_.file.ends_with(".h");
}

void TokenReader::CheckCodePage() const {
  if (!line_.starts_with("#pragma code_page(65001)")) Fail("the only code page is 65001, UTF-8");
}

void TokenReader::ReadLine() {
  if (!Utf16(line_)) Fail("the line is not UTF-8");
  while (!line_.empty()) {
    const char c = line_.front();
    // Every text of a resource is wide, with the prefix or without.
    if (c == ' ' || c == '\t' || line_.starts_with("L\"")) {
      line_.remove_prefix(1);
    } else if (c == '"') {
      ReadString();
    } else if (IsWordCharacter(c)) {
      ReadWord();
    } else {
      Add(TokenKind::kSymbol, std::string(1, c));
      line_.remove_prefix(1);
    }
  }
}

// A name, or a number: decimal, or hexadecimal after "0x", with an optional suffix of U and L.
void TokenReader::ReadWord() {
  std::size_t length = 0;
  while (length < line_.size() && IsWordCharacter(line_[length]))
    ++length;
  const std::string word(line_.substr(0, length));
  line_.remove_prefix(length);
  if (!IsDigit(word.front())) {
    Add(TokenKind::kWord, word);
    return;
  }
  const bool hexadecimal = word.starts_with("0x") || word.starts_with("0X");
  const std::string digits =
      word.substr(hexadecimal ? 2 : 0, word.find_last_not_of("uUlL") + 1 - (hexadecimal ? 2 : 0));
  std::uint32_t value = 0;
  const char* const digitsEnd = digits.data() + digits.size();
  const auto [end, error] = std::from_chars(digits.data(), digitsEnd, value, hexadecimal ? 16 : 10);
  if (digits.empty() || error != std::errc() || end != digitsEnd) {
    Fail("'" + word + "' is not a 32-bit number");
  }
  Add(TokenKind::kNumber, word, value);
}

void TokenReader::ReadString() {
  std::string text;
  line_.remove_prefix(1);
  while (true) {
    if (line_.empty()) Fail("the string has no end");
    if (line_.starts_with("\"\"")) {
      text += '"';
      line_.remove_prefix(2);
    } else if (line_.front() == '"') {
      line_.remove_prefix(1);
      Add(TokenKind::kString, std::move(text));
      return;
    } else if (line_.front() == '\\') {
      AppendEscape(text);
    } else {
      text += line_.front();
      line_.remove_prefix(1);
    }
  }
}

void TokenReader::AppendEscape(std::string& text) {
  static constexpr std::string_view kNames = "nrt0\\\"";
  static constexpr std::string_view kValues{"\n\r\t\0\\\"", 6};
  const std::size_t which = line_.size() < 2 ? std::string_view::npos : kNames.find(line_[1]);
  if (which == std::string_view::npos) Fail("this escape is not supported in a string");
  text += kValues[which];
  line_.remove_prefix(2);
}

}  // namespace

std::vector<Token> ReadTokens(std::string_view script, const std::string& fileName) {
  return TokenReader(script, fileName).Read();
}

}  // namespace rescomp
