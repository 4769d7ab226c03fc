#include "platform/tools/rescomp/message_source.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <sstream>
#include <string_view>

#include "platform/tools/rescomp/source_error.h"

namespace rescomp {

namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Decimal, or hexadecimal after "0x".
std::optional<std::uint32_t> Number(std::string_view text) {
  int base = 10;
  if (text.starts_with("0x") || text.starts_with("0X")) {
    base = 16;
    text.remove_prefix(2);
  }
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

class MessageSourceReader {
 public:
  MessageSourceReader(std::istream& source, const std::string& fileName)
      : source_(source), place_{fileName, 0} {}

  std::vector<MessageTable> Read();

 private:
  bool NextLine();
  [[noreturn]] void Fail(const std::string& what) const { throw SourceError(place_, what); }
  void ReadStatement();
  void ReadLanguageNames(std::string value);
  void AddLanguage(std::string_view item);
  void BeginMessage(std::string_view value);
  void ReadText(std::string_view languageName);
  void CheckMessageIsComplete() const;

  std::istream& source_;
  SourcePlace place_;
  std::string line_;
  std::vector<MessageTable> tables_;
  std::optional<std::uint32_t> number_;
};

bool MessageSourceReader::NextLine() {
  if (!std::getline(source_, line_)) return false;
  ++place_.line;
  if (line_.ends_with('\r')) line_.pop_back();
  if (!Utf16(line_)) Fail("the line is not UTF-8");
  return true;
}

std::vector<MessageTable> MessageSourceReader::Read() {
  while (NextLine()) {
    if (!Trimmed(line_).empty() && !line_.starts_with(';')) ReadStatement();
  }
  CheckMessageIsComplete();
  return std::move(tables_);
}

void MessageSourceReader::ReadStatement() {
  const std::size_t equals = line_.find('=');
  if (equals == std::string::npos) Fail("a statement 'name=value' is expected");
  const std::string name(Trimmed(std::string_view(line_).substr(0, equals)));
  const std::string value(Trimmed(std::string_view(line_).substr(equals + 1)));
  if (name == "MessageId") {
    BeginMessage(value);
  } else if (name == "Language") {
    ReadText(value);
  } else if (name == "LanguageNames") {
    ReadLanguageNames(value);
  } else if (name != "MessageIdTypedef" && name != "SymbolicName") {
    // These two only matter to a header with the numbers, which nobody asked for.
    Fail("'" + name + "' is not supported");
  }
}

// (Name=number:file stem Name=number:file stem), possibly over several lines.
void MessageSourceReader::ReadLanguageNames(std::string value) {
  if (!value.starts_with('(')) Fail("'(' is expected after LanguageNames=");
  while (!value.ends_with(')')) {
    if (!NextLine()) Fail("')' is missing at the end of LanguageNames");
    value += ' ';
    value += Trimmed(line_);
  }
  std::istringstream items(value.substr(1, value.size() - 2));
  for (std::string item; items >> item;)
    AddLanguage(item);
}

void MessageSourceReader::AddLanguage(std::string_view item) {
  const std::size_t equals = item.find('=');
  const std::size_t colon = item.find(':', equals == std::string_view::npos ? 0 : equals);
  if (equals == std::string_view::npos || colon == std::string_view::npos) {
    Fail("a language is given as Name=number:file, not as '" + std::string(item) + "'");
  }
  const auto language = Number(item.substr(equals + 1, colon - equals - 1));
  if (!language || *language == 0 || *language > 0xFFFF) Fail("not the number of a language");
  tables_.push_back({std::string(item.substr(0, equals)),
                     static_cast<std::uint16_t>(*language),
                     std::string(item.substr(colon + 1)),
                     {}});
}

// Nothing means the next number, "+n" one further on.
void MessageSourceReader::BeginMessage(std::string_view value) {
  CheckMessageIsComplete();
  const bool relative = value.empty() || value.starts_with('+');
  if (value.starts_with('+')) value.remove_prefix(1);
  const auto given = value.empty() ? std::optional<std::uint32_t>(1) : Number(value);
  if (!given) Fail("'" + std::string(value) + "' is not a message number");
  number_ = relative ? number_.value_or(0) + *given : *given;
}

void MessageSourceReader::ReadText(std::string_view languageName) {
  if (!number_) Fail("Language= comes before the first MessageId=");
  const auto table = std::ranges::find(tables_, languageName, &MessageTable::languageName);
  if (table == tables_.end()) {
    Fail("the language '" + std::string(languageName) + "' is not among LanguageNames");
  }
  const std::string message = "message " + std::to_string(*number_);
  if (table->texts.contains(*number_)) Fail(message + " comes twice in this language");
  const SourcePlace begin = place_;
  std::string text;
  while (NextLine() && line_ != ".")
    text += line_ + "\r\n";
  if (!source_) throw SourceError(begin, message + " is not ended by a line with a single dot");
  if (text.empty()) throw SourceError(begin, message + " has no text");
  table->texts.emplace(*number_, std::move(text));
}

void MessageSourceReader::CheckMessageIsComplete() const {
  if (!number_) return;
  for (const MessageTable& table : tables_) {
    if (!table.texts.contains(*number_)) {
      Fail("message " + std::to_string(*number_) + " has no text in " + table.languageName);
    }
  }
}

}  // namespace

std::vector<MessageTable> ReadMessageSource(std::istream& source, const std::string& fileName) {
  return MessageSourceReader(source, fileName).Read();
}

std::string MessageTableScript(const std::vector<MessageTable>& tables) {
  std::ostringstream script;
  for (const MessageTable& table : tables) {
    script << "LANGUAGE " << (table.language & 0x3FF) << ", " << (table.language >> 10)
           << "\n1 11 \"" << table.fileStem << ".bin\"\n";
  }
  return script.str();
}

}  // namespace rescomp
