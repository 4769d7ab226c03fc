// The engine library: loaded by name, bound by ten numbered entry points. Owned by DbEngine. The
// entry points take and return narrow text in the process's ANSI code page; calls are serialised by
// the database lock.
#pragma once

#include <windows.h>

#include "handles/handle.h"

namespace quillgate {

class EngineLibrary {
 public:
  struct Connection;  // opaque

  // The library's file name. The executable's folder is searched first.
  static constexpr const wchar_t* kFileName = L"qgdbeng.dll";

  // Throws DBerror when the library cannot be loaded or lacks one of the ten entry points,
  // including those that are never called.
  EngineLibrary();

  // Null on failure, with an error text in `message`.
  Connection* (*open)(const char* path, int mode, char** message) = nullptr;
  void (*close)(Connection* connection) = nullptr;
  // Returns 0 or a result code. On success, `table` holds (rows + 1) x columns texts, the column
  // names first; a null pointer stands for NULL.
  int (*getTable)(Connection* connection, const char* sql, char*** table, int* rows, int* columns,
                  char** message) = nullptr;
  void (*freeTable)(char** table) = nullptr;
  void (*freeMessage)(char* message) = nullptr;

 private:
  void Bind();

  ModuleHandle module_;
};

}  // namespace quillgate
