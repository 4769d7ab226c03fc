#include "engine_exports.h"

#include <cstdlib>
#include <cstring>
#include <exception>

#include "connection_table.h"

using quillgate::engine::Connection;
using quillgate::engine::Connections;
using quillgate::engine::ResultShape;
using quillgate::engine::TableBuilder;

namespace {

void SetMessage(char** message, const char* text) noexcept {
  if (message != nullptr) *message = ::strdup(text);
}

// Returns the result of `query` for an open connection, `otherwise` when it is not open.
template <class Function>
int Query(void* connection, int otherwise, Function query) noexcept {
  try {
    const auto open = Connections().Find(connection);
    return open == nullptr ? otherwise : query(*open);
  } catch (const std::exception&) {
    return otherwise;
  }
}

int RunStatement(Connection& connection, const char* sql, char*** table, ResultShape& shape,
                 char** message) {
  TableBuilder builder;
  std::string reason;
  const int code = connection.Run(sql, builder, shape, reason);
  if (code == SQLITE_OK) {
    *table = builder.Release();
  } else {
    shape = {};
    SetMessage(message, reason.c_str());
  }
  return code;
}

}  // namespace

void* dbengproc1(const char* path, int mode, char** message) noexcept {
  if (message != nullptr) *message = nullptr;
  try {
    if (path != nullptr && mode == 0) {
      return Connections().Insert(std::make_shared<Connection>(path));
    }
    SetMessage(message, path == nullptr ? "no file name given" : "unknown mode");
  } catch (const std::exception& error) {
    SetMessage(message, error.what());
  }
  return nullptr;
}

void dbengproc2(void* connection) noexcept {
  try {
    Connections().Remove(connection);
  } catch (const std::exception&) {
    // The mutex cannot be locked: the connection stays open, which does no harm.
  }
}

int dbengproc3(void* connection) noexcept {
  return Query(connection, SQLITE_MISUSE, [](Connection& open) { return open.LatestCode(); });
}

int dbengproc4(void* connection) noexcept {
  return Query(connection, 0, [](Connection& open) { return open.ChangedRows(); });
}

int dbengproc5(void* connection) noexcept {
  return Query(connection, 0, [](Connection& open) { return open.InTransaction() ? 1 : 0; });
}

const char* dbengproc6(int code) noexcept {
  return sqlite3_errstr(code);
}

int dbengproc10(void* connection, const char* sql, char*** table, int* rows, int* columns,
                char** message) noexcept {
  if (message != nullptr) *message = nullptr;
  if (table != nullptr) *table = nullptr;
  if (sql == nullptr || table == nullptr || rows == nullptr || columns == nullptr) {
    SetMessage(message, "an argument is missing");
    return SQLITE_MISUSE;
  }
  ResultShape shape;
  int code = SQLITE_MISUSE;
  try {
    const auto open = Connections().Find(connection);
    if (open != nullptr) {
      code = RunStatement(*open, sql, table, shape, message);
    } else {
      SetMessage(message, "the connection is not open");
    }
  } catch (const std::exception&) {
    code = SQLITE_NOMEM;
    SetMessage(message, sqlite3_errstr(code));
  }
  *rows = shape.rows;
  *columns = shape.columns;
  return code;
}

void dbengproc11(char** table) noexcept {
  quillgate::engine::FreeTable(table);
}

void dbengproc18(char* message) noexcept {
  std::free(message);
}

const char* dbengproc19() noexcept {
  return sqlite3_libversion();
}
