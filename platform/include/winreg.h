// The registry: keys and values.
#pragma once

#include <windef.h>
#include <winerror.h>

extern "C" {

using REGSAM = DWORD;
using LSTATUS = LONG;

#define HKEY_LOCAL_MACHINE (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0xFFFFFFFF80000002u)))

#define KEY_QUERY_VALUE 0x0001u
#define KEY_READ 0x20019u
#define KEY_WRITE 0x20006u
#define KEY_ALL_ACCESS 0xF003Fu
#define REG_OPTION_NON_VOLATILE 0x00000000u
#define REG_CREATED_NEW_KEY 1u
#define REG_OPENED_EXISTING_KEY 2u

#define REG_NONE 0u
#define REG_SZ 1u
#define REG_EXPAND_SZ 2u
#define REG_BINARY 3u
#define REG_DWORD 4u
#define REG_MULTI_SZ 7u

struct FILETIME {
  DWORD dwLowDateTime;
  DWORD dwHighDateTime;
};
using PFILETIME = FILETIME*;
struct SECURITY_ATTRIBUTES;

LSTATUS WINAPI RegOpenKeyExW(HKEY key, LPCWSTR subKey, DWORD options, REGSAM access, PHKEY result);
LSTATUS WINAPI RegCreateKeyExW(HKEY key, LPCWSTR subKey, DWORD reserved, LPWSTR className,
                               DWORD options, REGSAM access, const SECURITY_ATTRIBUTES* security,
                               PHKEY result, LPDWORD disposition);
LSTATUS WINAPI RegCloseKey(HKEY key);
LSTATUS WINAPI RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                LPDWORD bytes);
LSTATUS WINAPI RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                              DWORD bytes);
LSTATUS WINAPI RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD characters,
                             LPDWORD reserved, LPWSTR className, LPDWORD classCharacters,
                             PFILETIME lastWriteTime);
LSTATUS WINAPI RegDeleteKeyW(HKEY key, LPCWSTR subKey);
LSTATUS WINAPI RegDeleteValueW(HKEY key, LPCWSTR name);

}  // extern "C"
