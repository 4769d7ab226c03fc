// A key, made if it is not there and closed with the object, and what the tests write and read in
// it.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <winreg.h>

#include <initializer_list>
#include <string>
#include <vector>

class Key {
 public:
  explicit Key(const wchar_t* path, REGSAM access = KEY_ALL_ACCESS,
               HKEY parent = HKEY_LOCAL_MACHINE)
      : status_(::RegCreateKeyExW(parent, path, 0, nullptr, 0, access, nullptr, &key_, nullptr)) {}
  ~Key() {
    if (status_ == 0) ::RegCloseKey(key_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  HKEY Get() const { return key_; }
  // Of making or opening it.
  LSTATUS Status() const { return status_; }

  LSTATUS Set(const wchar_t* name, DWORD type, const void* data, std::size_t bytes) const {
    return ::RegSetValueExW(key_, name, 0, type, static_cast<const BYTE*>(data),
                            static_cast<DWORD>(bytes));
  }
  LSTATUS SetText(const wchar_t* name, const std::wstring& text) const {
    return Set(name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
  }
  LSTATUS Find(const wchar_t* name) const {
    return ::RegQueryValueExW(key_, name, nullptr, nullptr, nullptr, nullptr);
  }
  std::wstring Text(const wchar_t* name) const {
    wchar_t text[256] = L"(none)";
    DWORD bytes = sizeof text;
    ::RegQueryValueExW(key_, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &bytes);
    return text;
  }
  // 99 if there is none.
  DWORD Number(const wchar_t* name) const {
    DWORD number = 99;
    DWORD bytes = sizeof number;
    ::RegQueryValueExW(key_, name, nullptr, nullptr, reinterpret_cast<BYTE*>(&number), &bytes);
    return number;
  }
  LSTATUS Subkey(DWORD index, wchar_t* name, DWORD& characters) const {
    return ::RegEnumKeyExW(key_, index, name, &characters, nullptr, nullptr, nullptr, nullptr);
  }
  std::vector<std::wstring> Subkeys() const {
    std::vector<std::wstring> names;
    wchar_t name[256];
    for (DWORD characters = 256; Subkey(static_cast<DWORD>(names.size()), name, characters) == 0;
         characters = 256) {
      names.emplace_back(name, characters);
    }
    return names;
  }

 private:
  HKEY key_ = nullptr;
  LSTATUS status_;
};

// The status of opening a key to read it. It is closed again.
inline LSTATUS OpenStatus(const wchar_t* path, HKEY parent = HKEY_LOCAL_MACHINE) {
  HKEY key = nullptr;
  const LSTATUS status = ::RegOpenKeyExW(parent, path, 0, KEY_READ, &key);
  if (status == 0) {
    EXPECT_EQ(::RegCloseKey(key), 0);
  }
  return status;
}

struct RegistryCall {
  const char* call;
  LSTATUS status;
  DWORD expected;
};

inline void ExpectStatuses(std::initializer_list<RegistryCall> calls) {
  for (const RegistryCall& each : calls)
    EXPECT_EQ(static_cast<DWORD>(each.status), each.expected) << each.call;
}
