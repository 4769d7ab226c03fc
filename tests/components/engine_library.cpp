#include "components/engine_library.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace quillgate {

namespace {

template <class Function>
void Fetch(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(::dlsym(library, name));
  if (function == nullptr) throw std::runtime_error(std::string("no entry point ") + name);
}

EngineEntryPoints Load() {
  const auto file = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "qgdbeng.so";
  void* const library = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(::dlerror());
  EngineEntryPoints entries{};
  Fetch(library, "dbengproc1", entries.open);
  Fetch(library, "dbengproc2", entries.close);
  Fetch(library, "dbengproc3", entries.latestCode);
  Fetch(library, "dbengproc4", entries.changedRows);
  Fetch(library, "dbengproc5", entries.inTransaction);
  Fetch(library, "dbengproc6", entries.meaning);
  Fetch(library, "dbengproc10", entries.getTable);
  Fetch(library, "dbengproc11", entries.freeTable);
  Fetch(library, "dbengproc18", entries.freeMessage);
  Fetch(library, "dbengproc19", entries.version);
  return entries;
}

std::string TakeMessage(char* message) {
  const std::string text = message != nullptr ? message : "";
  Engine().freeMessage(message);
  return text;
}

}  // namespace

const EngineEntryPoints& Engine() {
  static const EngineEntryPoints entries = Load();
  return entries;
}

std::optional<std::string> EngineResult::Value() const {
  if (code == 0 && rows.size() == 1 && rows[0].size() == 1) return rows[0][0];
  ADD_FAILURE() << "no single value: code " << code << " " << message << ", " << rows.size()
                << " rows";
  return std::nullopt;
}

EngineResult RunStatement(void* connection, const char* sql) {
  char** table = nullptr;
  char* message = nullptr;
  int rows = -1;
  int columns = -1;
  EngineResult result;
  result.code = Engine().getTable(connection, sql, &table, &rows, &columns, &message);
  result.message = TakeMessage(message);
  if (result.code != 0) {
    EXPECT_EQ(table, nullptr);
    return result;
  }
  const auto width = static_cast<std::size_t>(columns);
  for (std::size_t column = 0; column < width; ++column)
    result.columns.push_back(table[column]);
  for (std::size_t row = 1; row <= static_cast<std::size_t>(rows); ++row) {
    auto& values = result.rows.emplace_back();
    for (std::size_t column = 0; column < width; ++column) {
      const char* const value = table[row * width + column];
      values.push_back(value != nullptr ? std::optional<std::string>(value) : std::nullopt);
    }
  }
  Engine().freeTable(table);
  return result;
}

EngineConnection::EngineConnection(const std::filesystem::path& path) {
  char* message = nullptr;
  connection_ = Engine().open(path.c_str(), 0, &message);
  message_ = TakeMessage(message);
}

EngineConnection::~EngineConnection() {
  Close();
}

EngineResult EngineConnection::Run(const std::string& sql) {
  return RunStatement(connection_, sql.c_str());
}

void EngineConnection::Close() {
  Engine().close(connection_);
  connection_ = nullptr;
}

}  // namespace quillgate
