#include "storage/result_table.h"

#include <cstring>
#include <stdexcept>

#include "encoding/multibyte.h"
#include "storage/db_error.h"

namespace quillgate {
namespace {

// Builds the text directly in the row: results are most of the data that passes through this layer.
void AppendValue(DbRow& row, const char* value, std::size_t maxValue) {
  if (value == nullptr) {
    row.emplace_back();
    return;
  }
  const std::string_view text(value);
  if (text.size() <= maxValue && IsAscii(text)) {
    row.emplace_back(text.begin(), text.end());
    return;
  }
  // More bytes than the limit may still be few enough characters.
  std::wstring wide = Widen(text);
  if (wide.size() > maxValue) throw std::length_error("value");
  row.push_back(std::move(wide));
}

}  // namespace

EngineMessage::~EngineMessage() {
  if (text_ != nullptr) library_.freeMessage(text_);
}

std::wstring EngineMessage::Text() const {
  if (text_ == nullptr) return {};
  std::wstring text = Widen(text_);
  if (text.size() > kMaxCharacters) text.resize(kMaxCharacters);
  return text;
}

int ResultTable::Get(EngineLibrary::Connection* connection, const char* sql,
                     std::wstring& message) {
  Release();
  EngineMessage text(library_);
  const int code = library_.getTable(connection, sql, &table_, &rows_, &columns_, text.Out());
  if (code != 0) message = text.Text();
  return code;
}

void ResultTable::CopyTo(DbRows& rows, std::size_t maxValue) const {
  if (rows_ <= 0) return;
  try {
    rows.reserve(static_cast<std::size_t>(rows_));
    const char* const* value = table_ + columns_;
    for (int row = 0; row < rows_; ++row) {
      DbRow& copy = rows.emplace_back();
      copy.reserve(static_cast<std::size_t>(columns_));
      for (int column = 0; column < columns_; ++column)
        AppendValue(copy, *value++, maxValue);
    }
  } catch (...) {
    rows.clear();
    throw DBerror(L"An error occurred when retrieving result from database.", DBerror::kOwnFailure);
  }
}

void ResultTable::Release() {
  if (table_ != nullptr) library_.freeTable(table_);
  table_ = nullptr;
  rows_ = 0;
  columns_ = 0;
}

}  // namespace quillgate
