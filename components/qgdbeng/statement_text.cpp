#include "statement_text.h"

#include <sqlite3.h>

#include <array>
#include <string>

namespace quillgate::engine {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\f";

// The text after the comment at its start. Empty when the comment does not end.
std::string_view AfterComment(std::string_view sql) {
  const bool isBlock = sql.front() == '/';
  const auto end = isBlock ? sql.find("*/", 2) : sql.find('\n');
  if (end == std::string_view::npos) return {};
  return sql.substr(end + (isBlock ? 2 : 1));
}

// The text from the first statement on.
std::string_view SkipToStatement(std::string_view sql) {
  while (true) {
    const auto start = sql.find_first_not_of(kBlanks);
    if (start == std::string_view::npos) return {};
    sql.remove_prefix(start);
    if (sql.front() == ';') {
      sql.remove_prefix(1);
    } else if (sql.starts_with("--") || sql.starts_with("/*")) {
      sql = AfterComment(sql);
    } else {
      return sql;
    }
  }
}

}  // namespace

bool HoldsMoreThanOneStatement(std::string_view sql) {
  const std::string text(SkipToStatement(sql));
  // SQLite decides which semicolon ends a statement: one in a text, a comment or the body of a
  // trigger does not.
  for (auto at = text.find(';'); at != std::string::npos; at = text.find(';', at + 1)) {
    if (sqlite3_complete(text.substr(0, at + 1).c_str()) == 0) continue;
    return !SkipToStatement(std::string_view(text).substr(at + 1)).empty();
  }
  return false;
}

bool IsRowStatement(std::string_view sql) {
  constexpr std::array<const char*, 4> kWords{"SELECT", "INSERT", "UPDATE", "DELETE"};
  constexpr int kWordLength = 6;
  const std::string_view text = SkipToStatement(sql);
  if (text.size() <= kWordLength) return false;
  for (const char* word : kWords) {
    if (sqlite3_strnicmp(text.data(), word, kWordLength) == 0) return true;
  }
  return false;
}

}  // namespace quillgate::engine
