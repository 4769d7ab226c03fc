#include "storage/scripted_engine.h"

#include <cstdlib>
#include <cstring>

#include "platform/kernel/modules.h"

namespace quillgate {
namespace {

constexpr wchar_t kModule[] = L"qgdbeng.dll";

ScriptedEngine* current = nullptr;

void* OpenEntry(const char* path, int, char** message) {
  return current->Open(path, message);
}
void CloseEntry(void* connection) {
  current->Close(connection);
}
int GetTableEntry(void* connection, const char* sql, char*** table, int* rows, int* columns,
                  char** message) {
  return current->GetTable(connection, sql, table, rows, columns, message);
}
void FreeTableEntry(char** table) {
  current->FreeTable(table);
}
void FreeMessageEntry(char* message) {
  current->FreeMessage(message);
}
// Looked for, never called.
void UnusedEntry() {
  std::abort();
}

template <class Function>
FARPROC Entry(Function* function) {
  return reinterpret_cast<FARPROC>(function);
}

}  // namespace

ScriptedEngine::ScriptedEngine(const std::string& missingEntry) {
  platform::ExportTable exports{
      {"dbengproc1", Entry(OpenEntry)},         {"dbengproc2", Entry(CloseEntry)},
      {"dbengproc10", Entry(GetTableEntry)},    {"dbengproc11", Entry(FreeTableEntry)},
      {"dbengproc18", Entry(FreeMessageEntry)},
  };
  for (const char* unused : {"dbengproc3", "dbengproc4", "dbengproc5", "dbengproc6", "dbengproc19"})
    exports.emplace(unused, Entry(UnusedEntry));
  exports.erase(missingEntry);
  platform::RegisterBuiltInModule(kModule, std::move(exports));
  current = this;
}

ScriptedEngine::~ScriptedEngine() {
  platform::UnregisterBuiltInModule(kModule);
  current = nullptr;
}

void ScriptedEngine::Answer(std::vector<EngineAnswer> answers) {
  answers_.assign(answers.begin(), answers.end());
}

char* ScriptedEngine::HandOut(const std::string& text) {
  ++unreleased_;
  return ::strdup(text.c_str());
}

void* ScriptedEngine::Open(const char* path, char** message) {
  openedPaths_.emplace_back(path);
  if (!openings_.empty()) {
    const std::string reason = openings_.front();
    openings_.pop_front();
    if (!reason.empty()) {
      *message = HandOut(reason);
      return nullptr;
    }
  }
  ++connections_;
  return this;
}

void ScriptedEngine::Close(const void* connection) {
  if (connection == this) --connections_;
}

int ScriptedEngine::GetTable(const void* connection, const char* sql, char*** table, int* rows,
                             int* columns, char** message) {
  if (connection != this) std::abort();
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

// The column names stand first. The texts are the engine's until it goes.
char** ScriptedEngine::HandOutTable(const EngineAnswer& answer, std::size_t columns) {
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

void ScriptedEngine::FreeTable(char** table) {
  --unreleased_;
  std::free(table);
}

void ScriptedEngine::FreeMessage(char* message) {
  --unreleased_;
  std::free(message);
}

}  // namespace quillgate
