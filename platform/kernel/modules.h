// Modules: the executable, the shared objects beside it, and modules that live in the layer itself.
// Owned by the layer; any thread.
#pragma once

#include <windef.h>

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace platform {

using ExportTable = std::map<std::string, FARPROC, std::less<>>;

// Makes LoadLibraryW find this name ("name.dll", any case) with these exports before it looks for a
// shared object. A module of the layer or of a test. The export of ordinal 15 has the name "#15".
void RegisterBuiltInModule(std::wstring_view name, ExportTable exports);
void UnregisterBuiltInModule(std::wstring_view name);

// The modules that live in the layer itself, by lower-case name. Each is there whether or not the
// machine has a desktop: what needs one fails by itself. Defined by the wiring.
std::map<std::wstring, ExportTable> LayerModules();

// The executable that runs.
std::filesystem::path ExecutablePath();

// What GetModuleFileNameW tells for the executable, so that a test's files lie in a folder of their
// own. Shared objects are still looked for beside the real executable too. Empty: the truth again.
void SetModuleFileName(const std::filesystem::path& path);

// The file that stands for a Windows file of that name ("name.dll", "name.sys"), in the folder of
// the executable; empty when there is none.
std::filesystem::path FindSharedObject(std::wstring_view fileName);

}  // namespace platform
