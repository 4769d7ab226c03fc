// What the engine returns for one statement: the table of texts and the error text. The destructors
// release them. Used on the stack of one call.
#pragma once

#include <string>

#include "storage/db_row.h"
#include "storage/engine_library.h"

namespace quillgate {

// An error text of the engine.
class EngineMessage {
 public:
  // Longer texts are truncated to this length.
  static constexpr std::size_t kMaxCharacters = 256;

  explicit EngineMessage(const EngineLibrary& library) : library_(library) {}
  ~EngineMessage();
  EngineMessage(const EngineMessage&) = delete;
  EngineMessage& operator=(const EngineMessage&) = delete;

  char** Out() { return &text_; }
  std::wstring Text() const;  // empty when there is none

 private:
  const EngineLibrary& library_;
  char* text_ = nullptr;
};

class ResultTable {
 public:
  explicit ResultTable(const EngineLibrary& library) : library_(library) {}
  ~ResultTable() { Release(); }
  ResultTable(const ResultTable&) = delete;
  ResultTable& operator=(const ResultTable&) = delete;

  // Releases the previous result and runs the statement. Returns the engine's result code; when
  // that is not 0, `message` is set to the error text.
  int Get(EngineLibrary::Connection* connection, const char* sql, std::wstring& message);

  // Appends the rows. Throws DBerror when a value has more than `maxValue` characters or the rows
  // cannot be built; `rows` is then empty.
  void CopyTo(DbRows& rows, std::size_t maxValue) const;

 private:
  void Release();

  const EngineLibrary& library_;
  char** table_ = nullptr;
  int rows_ = 0;
  int columns_ = 0;
};

}  // namespace quillgate
