#include "engine_database.h"

namespace quillgate::notifier {

const EngineLibrary& EngineLibrary::In(const std::wstring& folder) {
  static const EngineLibrary& library = *new EngineLibrary(folder);
  return library;
}

EngineLibrary::EngineLibrary(const std::wstring& folder)
    : module_(::LoadLibraryW((folder + L"qgdbeng.dll").c_str())) {
  if (module_ == nullptr) throw EngineError("the engine library cannot be loaded");
  Fetch("dbengproc1", open);
  Fetch("dbengproc2", close);
  Fetch("dbengproc10", getTable);
  Fetch("dbengproc11", freeTable);
  Fetch("dbengproc18", freeMessage);
}

template <class Entry>
void EngineLibrary::Fetch(const char* name, Entry& entry) {
  entry = reinterpret_cast<Entry>(::GetProcAddress(module_, name));
  if (entry == nullptr) throw EngineError(std::string("the engine library has no ") + name);
}

EngineConnection::EngineConnection(const EngineLibrary& library, const std::string& path)
    : library_(library) {
  char* message = nullptr;
  connection_ = library_.open(path.c_str(), 0, &message);
  if (connection_ == nullptr) Throw(message);
}

EngineConnection::~EngineConnection() {
  library_.close(connection_);
}

void EngineConnection::Run(const std::string& sql) {
  char** table = nullptr;
  char* message = nullptr;
  int rows = 0;
  int columns = 0;
  if (library_.getTable(connection_, sql.c_str(), &table, &rows, &columns, &message) != 0) {
    Throw(message);
  }
  library_.freeTable(table);
}

void EngineConnection::Throw(char* message) const {
  const std::string text = message == nullptr ? "out of memory" : message;
  library_.freeMessage(message);
  throw EngineError(text);
}

}  // namespace quillgate::notifier
