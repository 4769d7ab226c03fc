// An engine library whose answers a test writes: it takes the place of the real one while it lives.
// Statements without a scripted answer succeed with no rows. Counts what it hands out and what it
// gets back. One at a time; one thread.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

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
  explicit ScriptedEngine(const std::string& missingEntry = "");
  ~ScriptedEngine();
  ScriptedEngine(const ScriptedEngine&) = delete;
  ScriptedEngine& operator=(const ScriptedEngine&) = delete;

  // For the next statements, in order; those that make the schema are not among them.
  void Answer(std::vector<EngineAnswer> answers);
  // For every statement after the ones above.
  void AnswerAlways(EngineAnswer answer) { always_ = std::move(answer); }
  // The reasons with which the next openings fail; an empty one succeeds.
  void AnswerOpenings(std::deque<std::string> reasons) { openings_ = std::move(reasons); }
  // Forgets the statements seen so far.
  void ClearStatements() { statements_.clear(); }

  const std::vector<std::string>& Statements() const { return statements_; }
  const std::vector<std::string>& OpenedPaths() const { return openedPaths_; }
  int OpenConnections() const { return connections_; }
  // Tables and error texts that were handed out and have not come back.
  int Unreleased() const { return unreleased_; }

  // The entry points.
  void* Open(const char* path, char** message);
  void Close(const void* connection);
  int GetTable(const void* connection, const char* sql, char*** table, int* rows, int* columns,
               char** message);
  void FreeTable(char** table);
  void FreeMessage(char* message);

 private:
  char* HandOut(const std::string& text);
  char** HandOutTable(const EngineAnswer& answer, std::size_t columns);

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
