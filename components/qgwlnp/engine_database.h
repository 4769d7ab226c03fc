// The service's database, through its engine library: one connection. Texts are UTF-8. Used on the
// stack of one event.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace quillgate::notifier {

// Why a statement, or the opening of the file, has failed, as the engine says.
class EngineError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class EngineLibrary {
 public:
  // The library in that folder; loaded once and for the whole process. Throws EngineError when it
  // cannot be loaded; the next call then tries again.
  static const EngineLibrary& In(const std::wstring& folder);

  EngineLibrary(const EngineLibrary&) = delete;
  EngineLibrary& operator=(const EngineLibrary&) = delete;

  void* (*open)(const char* path, int mode, char** message) = nullptr;
  void (*close)(void* connection) = nullptr;
  int (*getTable)(void* connection, const char* sql, char*** table, int* rows, int* columns,
                  char** message) = nullptr;
  void (*freeTable)(char** table) = nullptr;
  void (*freeMessage)(char* message) = nullptr;

 private:
  explicit EngineLibrary(const std::wstring& folder);

  template <class Entry>
  void Fetch(const char* name, Entry& entry);

  const HMODULE module_;
};

class EngineConnection {
 public:
  // A missing file is created. Throws EngineError.
  EngineConnection(const EngineLibrary& library, const std::string& path);
  // Rolls back what was not committed.
  ~EngineConnection();
  EngineConnection(const EngineConnection&) = delete;
  EngineConnection& operator=(const EngineConnection&) = delete;

  // Runs one statement; its rows are dropped. Throws EngineError, also while another connection
  // uses the file.
  void Run(const std::string& sql);

 private:
  // Throws the engine's message, which it releases.
  [[noreturn]] void Throw(char* message) const;

  const EngineLibrary& library_;
  void* connection_ = nullptr;
};

}  // namespace quillgate::notifier
