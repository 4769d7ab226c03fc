// Ownership of system handles: a move-only type whose trait defines the handle's type, the value
// that means none, and how the handle is closed. A raw handle as a parameter is borrowed; a
// UniqueHandle is owned.
#pragma once

#include <windows.h>
#include <winsvc.h>

#include <utility>

namespace quillgate {

// Trait: `using Type`, `static Type Invalid()`, `static void Close(Type)`.
template <class Trait>
class UniqueHandle {
 public:
  using Type = typename Trait::Type;

  UniqueHandle() = default;
  explicit UniqueHandle(Type handle) : handle_(handle) {}
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.Release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    Reset(other.Release());
    return *this;
  }
  ~UniqueHandle() { Reset(); }

  Type Get() const { return handle_; }
  bool IsValid() const { return handle_ != Trait::Invalid(); }
  Type Release() { return std::exchange(handle_, Trait::Invalid()); }

  // Closes the current handle and takes ownership of the new one. The last error is preserved.
  void Reset(Type handle = Trait::Invalid()) noexcept {
    const Type old = std::exchange(handle_, handle);
    if (old == Trait::Invalid()) return;
    const DWORD error = ::GetLastError();
    Trait::Close(old);
    ::SetLastError(error);
  }

 private:
  Type handle_ = Trait::Invalid();
};

// Files and devices: none is INVALID_HANDLE_VALUE.
struct FileHandleTrait {
  using Type = HANDLE;
  static Type Invalid() { return INVALID_HANDLE_VALUE; }
  static void Close(Type handle) { ::CloseHandle(handle); }
};
using FileHandle = UniqueHandle<FileHandleTrait>;

// Threads, mutexes and other kernel objects: none is null.
struct KernelHandleTrait {
  using Type = HANDLE;
  static Type Invalid() { return nullptr; }
  static void Close(Type handle) { ::CloseHandle(handle); }
};
using KernelHandle = UniqueHandle<KernelHandleTrait>;

struct ModuleHandleTrait {
  using Type = HMODULE;
  static Type Invalid() { return nullptr; }
  static void Close(Type handle) { ::FreeLibrary(handle); }
};
using ModuleHandle = UniqueHandle<ModuleHandleTrait>;

struct RegistryKeyTrait {
  using Type = HKEY;
  static Type Invalid() { return nullptr; }
  static void Close(Type handle) { ::RegCloseKey(handle); }
};
using RegistryKey = UniqueHandle<RegistryKeyTrait>;

// The service control manager and the services opened through it.
struct ServiceHandleTrait {
  using Type = SC_HANDLE;
  static Type Invalid() { return nullptr; }
  static void Close(Type handle) { ::CloseServiceHandle(handle); }
};
using ServiceHandle = UniqueHandle<ServiceHandleTrait>;

// A menu that is not a submenu. Destroying it destroys its submenus.
struct MenuTrait {
  using Type = HMENU;
  static Type Invalid() { return nullptr; }
  static void Close(Type menu) { ::DestroyMenu(menu); }
};
using MenuHandle = UniqueHandle<MenuTrait>;

// Memory of the process heap.
struct HeapBlockTrait {
  using Type = void*;
  static Type Invalid() { return nullptr; }
  static void Close(Type block) { ::HeapFree(::GetProcessHeap(), 0, block); }
};
using HeapBlock = UniqueHandle<HeapBlockTrait>;

// Memory for the clipboard, which takes it over.
struct GlobalBlockTrait {
  using Type = HGLOBAL;
  static Type Invalid() { return nullptr; }
  static void Close(Type block) { ::GlobalFree(block); }
};
using GlobalBlock = UniqueHandle<GlobalBlockTrait>;

// Memory that a system call allocated for its caller.
struct LocalBlockTrait {
  using Type = HLOCAL;
  static Type Invalid() { return nullptr; }
  static void Close(Type block) { ::LocalFree(block); }
};
using LocalBlock = UniqueHandle<LocalBlockTrait>;

}  // namespace quillgate
