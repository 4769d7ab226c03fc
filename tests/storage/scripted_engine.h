// An engine library whose answers a test writes: it takes the place of the real one while it lives.
// Statements without a scripted answer succeed with no rows. Counts what it hands out and what it
// gets back. One at a time; one thread.
#pragma once

#include <cstdlib>
#include <cstring>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "platform/kernel/modules.h"

namespace quillgate {

struct EngineAnswer {
  int code = 0;
  std::string message;
  // Row by row, without the column names; nothing stands for NULL.
  std::vector<std::vector<std::optional<std::string>>> rows;
};

class ScriptedEngine {
 public:
  // Lacks the entry point of that name.
  explicit ScriptedEngine(const std::string& missingEntry = "") {
    current = this;
    const auto entry = [](auto* function) { return reinterpret_cast<FARPROC>(function); };
    platform::ExportTable exports;
    exports["dbengproc1"] =
        entry(+[](const char* path, int, char** message) { return current->Open(path, message); });
    exports["dbengproc2"] =
        entry(+[](void* connection) { current->connections_ -= connection == current; });
    exports["dbengproc10"] = entry(+[](void* connection, const char* sql, char*** table, int* rows,
                                       int* columns, char** message) {
      if (connection != current) std::abort();
      return current->GetTable(sql, table, rows, columns, message);
    });
    exports["dbengproc11"] = exports["dbengproc18"] = entry(+[](void* handedOut) {
      --current->unreleased_;
      std::free(handedOut);
    });
    // Looked for, never called.
    for (const char* name : {"dbengproc3", "dbengproc4", "dbengproc5", "dbengproc6", "dbengproc19"})
      exports[name] = entry(+[] { std::abort(); });
    exports.erase(missingEntry);
    platform::RegisterBuiltInModule(kModule, std::move(exports));
  }
  ~ScriptedEngine() { platform::UnregisterBuiltInModule(kModule); }
  ScriptedEngine(const ScriptedEngine&) = delete;
  ScriptedEngine& operator=(const ScriptedEngine&) = delete;

  // For the next statements, in order; those that make the schema are not among them.
  void Answer(std::vector<EngineAnswer> answers) {
    answers_.assign(answers.begin(), answers.end());
  }
  // For every statement after the ones above.
  void AnswerAlways(EngineAnswer answer) { always_ = std::move(answer); }
  // The reasons with which the next openings fail.
  void AnswerOpenings(std::deque<std::string> reasons) { openings_ = std::move(reasons); }
  // Forgets the statements seen so far.
  void ClearStatements() { statements_.clear(); }

  const std::vector<std::string>& Statements() const { return statements_; }
  const std::vector<std::string>& OpenedPaths() const { return openedPaths_; }
  int OpenConnections() const { return connections_; }
  // Tables and error texts that were handed out and have not come back.
  int Unreleased() const { return unreleased_; }

 private:
  static constexpr wchar_t kModule[] = L"qgdbeng.dll";

  void* Open(const char* path, char** message) {
    openedPaths_.emplace_back(path);
    if (!openings_.empty()) {
      *message = HandOut(openings_.front());
      openings_.pop_front();
      return nullptr;
    }
    ++connections_;
    return this;
  }

  int GetTable(const char* sql, char*** table, int* rows, int* columns, char** message) {
    EngineAnswer answer = always_.value_or(EngineAnswer{});
    const bool isSchema = !always_ && std::string_view(sql).starts_with("CREATE");
    if (!isSchema) statements_.emplace_back(sql);
    if (!isSchema && !answers_.empty()) {
      answer = answers_.front();
      answers_.pop_front();
    }
    if (answer.code != 0) {
      *message = HandOut(answer.message);
      return answer.code;
    }
    *rows = static_cast<int>(answer.rows.size());
    *columns = answer.rows.empty() ? 0 : static_cast<int>(answer.rows.front().size());
    *table = HandOutTable(answer, static_cast<std::size_t>(*columns));
    return 0;
  }

  char* HandOut(const std::string& text) {
    ++unreleased_;
    return ::strdup(text.c_str());
  }

  // The column names stand first. The texts are the engine's until it goes.
  char** HandOutTable(const EngineAnswer& answer, std::size_t columns) {
    ++unreleased_;
    const std::size_t cells = (answer.rows.size() + 1) * columns;
    const auto table = static_cast<char**>(std::calloc(cells + 1, sizeof(char*)));
    char** next = table;
    for (std::size_t column = 0; column < columns; ++column)
      *next++ = texts_.emplace_back("name").data();
    for (const auto& row : answer.rows) {
      for (const auto& value : row)
        *next++ = value ? texts_.emplace_back(*value).data() : nullptr;
    }
    return table;
  }

  static inline ScriptedEngine* current = nullptr;
  std::deque<EngineAnswer> answers_;
  std::optional<EngineAnswer> always_;
  std::deque<std::string> openings_;
  std::deque<std::string> texts_;
  std::vector<std::string> statements_;
  std::vector<std::string> openedPaths_;
  int connections_ = 0;
  int unreleased_ = 0;
};

}  // namespace quillgate
