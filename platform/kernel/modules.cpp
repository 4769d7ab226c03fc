#include "platform/kernel/modules.h"

#include <windows.h>

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <fstream>
#include <mutex>
#include <vector>

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/handle_table.h"
#include "platform/kernel/log.h"
#include "platform/kernel/path.h"
#include "platform/kernel/trusted_path.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

// A loaded module. `library_` is null for the executable and for modules of the layer.
class Module final : public Object {
 public:
  Module(std::wstring name, fs::path path) : name_(std::move(name)), path_(std::move(path)) {}
  ~Module() override {
    if (library_ != nullptr) ::dlclose(library_);
  }
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  void SetLibrary(void* library) { library_ = library; }
  void SetExports(ExportTable exports) { exports_ = std::move(exports); }
  const std::wstring& Name() const { return name_; }
  const fs::path& Path() const { return path_; }
  FARPROC Find(const char* name) const;

  int references = 1;

 private:
  std::wstring name_;
  fs::path path_;
  void* library_ = nullptr;
  ExportTable exports_;
};

// Only the library's own symbols count: dlsym also finds those of the libraries it depends on.
FARPROC Module::Find(const char* name) const {
  if (library_ == nullptr) {
    const auto found = exports_.find(std::string_view(name));
    return found == exports_.end() ? nullptr : found->second;
  }
  void* symbol = ::dlsym(library_, name);
  link_map* own = nullptr;
  void* owner = nullptr;
  Dl_info info{};
  if (symbol == nullptr || ::dlinfo(library_, RTLD_DI_LINKMAP, &own) != 0 ||
      ::dladdr1(symbol, &info, &owner, RTLD_DL_LINKMAP) == 0 || owner != own) {
    return nullptr;
  }
  return reinterpret_cast<FARPROC>(symbol);
}

// All members are guarded by the mutex. It is not held while a library is loaded or unloaded,
// because that runs code of the library.
struct ModuleList {
  std::mutex mutex;
  std::map<std::wstring, ExportTable> builtIn = LayerModules();  // by lower-case name
  std::map<std::wstring, HMODULE> loaded;                        // by lower-case name
  fs::path shownPath;
};

ModuleList& List() {
  static ModuleList& list = *new ModuleList;
  return list;
}

// The file's name in lower case, with ".dll" added when it has no extension.
std::wstring ModuleName(std::wstring_view fileName) {
  std::wstring name = LowerName(fileName.substr(fileName.find_last_of(L"\\/") + 1));
  if (name.find(L'.') == std::wstring::npos) return name + L".dll";
  if (name.ends_with(L'.')) name.pop_back();
  return name;
}

HMODULE Insert(std::shared_ptr<Module> module) {
  return static_cast<HMODULE>(Handles().Insert(HandleKind::kModule, std::move(module)));
}

HMODULE ExecutableHandle() {
  static const HMODULE handle =
      Insert(std::make_shared<Module>(ModuleName(L"executable.exe"), fs::path()));
  return handle;
}

std::shared_ptr<Module> FindModule(HMODULE handle) {
  return Resolve<Module>(HandleKind::kModule, handle);
}

// The loaded module of that name, with one reference more when `reference` is true. Null when it is
// not loaded.
HMODULE FindLoaded(const std::wstring& name, bool reference) {
  ModuleList& list = List();
  const std::lock_guard lock(list.mutex);
  const auto found = list.loaded.find(name);
  if (found == list.loaded.end()) return nullptr;
  if (reference) ++FindModule(found->second)->references;
  return found->second;
}

// Adds a module to the list. When another thread has already added it, that one is referenced.
HMODULE AddLoaded(std::shared_ptr<Module> module) {
  ModuleList& list = List();
  const std::lock_guard lock(list.mutex);
  const auto [entry, added] = list.loaded.try_emplace(module->Name(), nullptr);
  if (added) {
    entry->second = Insert(std::move(module));
  } else {
    ++FindModule(entry->second)->references;
  }
  return entry->second;
}

std::shared_ptr<Module> OpenBuiltIn(const std::wstring& name) {
  ModuleList& list = List();
  const std::lock_guard lock(list.mutex);
  const auto found = list.builtIn.find(name);
  if (found == list.builtIn.end()) return nullptr;
  auto module = std::make_shared<Module>(name, RootFolder() / "System32" / Utf8(name));
  module->SetExports(found->second);
  return module;
}

bool IsElfImage(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  char magic[4] = {};
  return file.read(magic, sizeof magic) && std::string_view(magic, 4) == "\177ELF";
}

std::shared_ptr<Module> OpenLibrary(std::wstring_view fileName, DWORD& error) {
  error = ERROR_MOD_NOT_FOUND;
  const fs::path path = FindSharedObject(fileName);
  if (path.empty()) return nullptr;
  error = RequireTrusted(path, "LoadLibraryW");
  if (error != NO_ERROR) return nullptr;
  auto module = std::make_shared<Module>(ModuleName(fileName), path);
  void* library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    LogLine(std::string("LoadLibraryW: ") + ::dlerror());
    error = IsElfImage(path) ? ERROR_MOD_NOT_FOUND : ERROR_BAD_EXE_FORMAT;
    return nullptr;
  }
  module->SetLibrary(library);
  return module;
}

// A file of that stem with the extension ".so": the exact name first, else one in any case.
fs::path FindInFolder(const fs::path& folder, const std::wstring& stem) {
  std::error_code error;
  fs::path exact = folder / (Utf8(stem) + ".so");
  if (fs::is_regular_file(exact, error)) return exact;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    if (entry.path().extension() == ".so" && EqualNames(Wide(entry.path().stem().native()), stem) &&
        entry.is_regular_file(error)) {
      return entry.path();
    }
  }
  return {};
}

// The link to the executable in the root folder's "Programs"; empty when there is none, or one that
// others could change.
fs::path LinkToExecutable() {
  const fs::path executable = ExecutablePath();
  std::error_code error;
  fs::path link = fs::absolute(RootFolder() / "Programs" / executable.filename(), error);
  if (error || fs::canonical(link, error) != executable) return {};
  return RequireTrusted(link, "program") == NO_ERROR ? link : fs::path();
}

fs::path ShownExecutablePath() {
  {
    ModuleList& list = List();
    const std::lock_guard lock(list.mutex);
    if (!list.shownPath.empty()) return list.shownPath;
  }
  fs::path link = LinkToExecutable();
  return link.empty() ? ExecutablePath() : link;
}

}  // namespace

void RegisterBuiltInModule(std::wstring_view name, ExportTable exports) {
  ModuleList& list = List();
  const std::lock_guard lock(list.mutex);
  list.builtIn[ModuleName(name)] = std::move(exports);
}

void UnregisterBuiltInModule(std::wstring_view name) {
  ModuleList& list = List();
  const std::lock_guard lock(list.mutex);
  list.builtIn.erase(ModuleName(name));
}

fs::path ExecutablePath() {
  static const fs::path& path = *new fs::path([] {
    std::error_code error;
    std::string target = fs::read_symlink("/proc/self/exe", error).string();
    // The kernel appends this when the program's file has been replaced while it runs.
    constexpr std::string_view kDeleted = " (deleted)";
    if (target.ends_with(kDeleted)) target.resize(target.size() - kDeleted.size());
    return target;
  }());
  return path;
}

void SetModuleFileName(const fs::path& path) {
  ModuleList& list = List();
  const std::lock_guard lock(list.mutex);
  list.shownPath = path;
}

fs::path FindSharedObject(std::wstring_view fileName) {
  const std::size_t base = fileName.find_last_of(L"\\/") + 1;
  const std::wstring_view name = fileName.substr(base);
  const std::wstring stem(name.substr(0, name.find_last_of(L'.')));
  if (stem.empty()) return {};
  if (base != 0) return FindInFolder(PosixPath(fileName.substr(0, base)), stem);
  const fs::path shown = FindInFolder(ShownExecutablePath().parent_path(), stem);
  return shown.empty() ? FindInFolder(ExecutablePath().parent_path(), stem) : shown;
}

}  // namespace platform

extern "C" {

HMODULE WINAPI LoadLibraryW(LPCWSTR fileName) try {
  if (fileName == nullptr || *fileName == L'\0') {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  const std::wstring name = platform::ModuleName(fileName);
  if (const HMODULE loaded = platform::FindLoaded(name, true)) return loaded;
  DWORD error = NO_ERROR;
  std::shared_ptr<platform::Module> module = platform::OpenBuiltIn(name);
  if (module == nullptr) module = platform::OpenLibrary(fileName, error);
  if (module == nullptr) {
    ::SetLastError(error);
    return nullptr;
  }
  return platform::AddLoaded(std::move(module));
} catch (...) {
  return platform::FailedCall<HMODULE>(nullptr);
}

BOOL WINAPI FreeLibrary(HMODULE module) try {
  std::shared_ptr<platform::Object> unloaded;  // outlives the lock: unloading runs the library
  platform::ModuleList& list = platform::List();
  const std::lock_guard lock(list.mutex);
  const std::shared_ptr<platform::Module> found = platform::FindModule(module);
  if (found == nullptr) {
    ::SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
  }
  if (module == platform::ExecutableHandle() || --found->references > 0) return TRUE;
  list.loaded.erase(found->Name());
  unloaded = platform::Handles().Remove(platform::HandleKind::kModule, module);
  return TRUE;
} catch (...) {
  return platform::FailedCall(FALSE);
}

FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name) try {
  const std::shared_ptr<platform::Module> found = platform::FindModule(module);
  if (found == nullptr) {
    ::SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
  }
  // A number instead of a name is an ordinal, which only modules of the layer have.
  const std::string ordinal = "#" + std::to_string(LOWORD(reinterpret_cast<ULONG_PTR>(name)));
  const FARPROC address = found->Find(IS_INTRESOURCE(name) ? ordinal.c_str() : name);
  if (address == nullptr) ::SetLastError(ERROR_PROC_NOT_FOUND);
  return address;
} catch (...) {
  return platform::FailedCall<FARPROC>(nullptr);
}

HMODULE WINAPI GetModuleHandleW(LPCWSTR moduleName) try {
  if (moduleName == nullptr) return platform::ExecutableHandle();
  const HMODULE loaded = platform::FindLoaded(platform::ModuleName(moduleName), false);
  if (loaded == nullptr) ::SetLastError(ERROR_MOD_NOT_FOUND);
  return loaded;
} catch (...) {
  return platform::FailedCall<HMODULE>(nullptr);
}

DWORD WINAPI GetModuleFileNameW(HMODULE module, LPWSTR fileName, DWORD characters) try {
  const HMODULE handle = module == nullptr ? platform::ExecutableHandle() : module;
  const std::shared_ptr<platform::Module> found = platform::FindModule(handle);
  if (found == nullptr) {
    ::SetLastError(ERROR_MOD_NOT_FOUND);
    return 0;
  }
  const std::wstring path = platform::WindowsPath(
      handle == platform::ExecutableHandle() ? platform::ShownExecutablePath() : found->Path());
  if (characters > path.size()) {
    std::ranges::copy(path, fileName);
    fileName[path.size()] = L'\0';
    return static_cast<DWORD>(path.size());
  }
  ::SetLastError(ERROR_INSUFFICIENT_BUFFER);
  if (characters == 0) return 0;
  // A path that does not fit is truncated, and the buffer's size is returned.
  std::ranges::copy_n(path.begin(), static_cast<std::ptrdiff_t>(characters - 1), fileName);
  fileName[characters - 1] = L'\0';
  return characters;
} catch (...) {
  return platform::FailedCall(DWORD{0});
}

}  // extern "C"
