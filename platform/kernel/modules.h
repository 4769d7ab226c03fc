// Modules: the executable, the shared objects in its folder, and the modules that are part of the
// layer. Owned by the layer; any thread.
#pragma once

#include <windef.h>

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace platform {

using ExportTable = std::map<std::string, FARPROC, std::less<>>;

// Registers a module that LoadLibraryW finds by this name ("name.dll", any case) before it searches
// for a shared object. The export of ordinal 15 has the name "#15".
void RegisterBuiltInModule(std::wstring_view name, ExportTable exports);
void UnregisterBuiltInModule(std::wstring_view name);

// The modules that are part of the layer, by lower-case name. They can be loaded on a machine
// without a desktop too; then the functions that need one fail. Defined by the wiring.
std::map<std::wstring, ExportTable> LayerModules();

// The path of the running executable. A program keeps files of its own beside itself, which it
// cannot where its folder is read-only, as below /usr. So the root folder may have a link to it,
// "Programs/NAME": GetModuleFileNameW then returns the path of that link, and what a program looks
// for beside itself is looked for there first.
std::filesystem::path ExecutablePath();

// Sets the path that GetModuleFileNameW returns for the executable, so that a test has a folder of
// its own. Shared objects are searched for in that folder and then in the real executable's. Empty:
// the real path again.
void SetModuleFileName(const std::filesystem::path& path);

// The shared object "name.so" for a Windows file name ("name.dll", "name.sys"): in the folder that
// the name contains, else in the executable's. Empty when there is none.
std::filesystem::path FindSharedObject(std::wstring_view fileName);

}  // namespace platform
