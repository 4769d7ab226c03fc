#include "storage/engine_library.h"

#include <string>

#include "storage/db_error.h"

namespace quillgate {
namespace {

[[noreturn]] void ThrowLoadError() {
  throw DBerror(std::wstring(L"There was an error loading ") + EngineLibrary::kFileName +
                    L".\n\nPlease re-install the program.",
                DBerror::kOwnFailure);
}

FARPROC Fetch(const ModuleHandle& module, const char* name) {
  const FARPROC entry = ::GetProcAddress(module.Get(), name);
  if (entry == nullptr) ThrowLoadError();
  return entry;
}

template <class Entry>
void FetchInto(const ModuleHandle& module, const char* name, Entry& entry) {
  entry = reinterpret_cast<Entry>(Fetch(module, name));
}

}  // namespace

EngineLibrary::EngineLibrary() : module_(::LoadLibraryW(kFileName)) {
  if (!module_.IsValid()) ThrowLoadError();
  Bind();
}

// Entry points that are never called are looked up too: a library that lacks them is a different
// one or damaged.
void EngineLibrary::Bind() {
  FetchInto(module_, "dbengproc1", open);
  FetchInto(module_, "dbengproc2", close);
  Fetch(module_, "dbengproc3");
  Fetch(module_, "dbengproc4");
  Fetch(module_, "dbengproc19");
  Fetch(module_, "dbengproc5");
  Fetch(module_, "dbengproc6");
  FetchInto(module_, "dbengproc10", getTable);
  FetchInto(module_, "dbengproc11", freeTable);
  FetchInto(module_, "dbengproc18", freeMessage);
}

}  // namespace quillgate
