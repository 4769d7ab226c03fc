// Kernel services: last error, modules, threads and waits, time, files and devices, text, messages.
#pragma once

#include <windef.h>
#include <winerror.h>

#include <cstdarg>

extern "C" {

#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1)))

// --- last error, handles, memory ---
DWORD WINAPI GetLastError();
void WINAPI SetLastError(DWORD error);
BOOL WINAPI CloseHandle(HANDLE object);

#define HEAP_ZERO_MEMORY 0x00000008u
HANDLE WINAPI GetProcessHeap();
LPVOID WINAPI HeapAlloc(HANDLE heap, DWORD flags, SIZE_T bytes);
BOOL WINAPI HeapFree(HANDLE heap, DWORD flags, LPVOID memory);
HLOCAL WINAPI LocalFree(HLOCAL memory);
#define GMEM_MOVEABLE 0x0002u
HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T bytes);
LPVOID WINAPI GlobalLock(HGLOBAL memory);
BOOL WINAPI GlobalUnlock(HGLOBAL memory);
HGLOBAL WINAPI GlobalFree(HGLOBAL memory);
// Written also when nobody reads it any more.
inline PVOID RtlSecureZeroMemory(PVOID memory, SIZE_T bytes) {
  auto* each = static_cast<volatile char*>(memory);
  while (bytes-- != 0)
    *each++ = 0;
  return memory;
}
#define SecureZeroMemory RtlSecureZeroMemory

// --- modules ---
HMODULE WINAPI LoadLibraryW(LPCWSTR fileName);
BOOL WINAPI FreeLibrary(HMODULE module);
FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name);
HMODULE WINAPI GetModuleHandleW(LPCWSTR moduleName);
DWORD WINAPI GetModuleFileNameW(HMODULE module, LPWSTR fileName, DWORD characters);

#define RT_MESSAGETABLE MAKEINTRESOURCEW(11)
using ENUMRESLANGPROCW = BOOL(CALLBACK*)(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language,
                                         LONG_PTR parameter);
BOOL WINAPI EnumResourceLanguagesW(HMODULE module, LPCWSTR type, LPCWSTR name,
                                   ENUMRESLANGPROCW callback, LONG_PTR parameter);

// --- command line, files ---
LPWSTR WINAPI GetCommandLineW();
DWORD WINAPI GetCurrentDirectoryW(DWORD characters, LPWSTR folder);
#define INVALID_FILE_ATTRIBUTES (static_cast<DWORD>(-1))
#define FILE_ATTRIBUTE_READONLY 0x00000001u
#define FILE_ATTRIBUTE_DIRECTORY 0x00000010u
#define FILE_ATTRIBUTE_NORMAL 0x00000080u
DWORD WINAPI GetFileAttributesW(LPCWSTR fileName);

#define GENERIC_READ 0x80000000u
#define GENERIC_WRITE 0x40000000u
#define FILE_SHARE_READ 0x00000001u
#define FILE_SHARE_WRITE 0x00000002u
#define OPEN_EXISTING 3u
#define FILE_FLAG_OVERLAPPED 0x40000000u
struct SECURITY_ATTRIBUTES {
  DWORD nLength;
  LPVOID lpSecurityDescriptor;
  BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;
struct OVERLAPPED;
using LPOVERLAPPED = OVERLAPPED*;
// Opens devices ("\\.\name") only.
HANDLE WINAPI CreateFileW(LPCWSTR fileName, DWORD access, DWORD share,
                          LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags,
                          HANDLE templateFile);
BOOL WINAPI DeviceIoControl(HANDLE device, DWORD code, LPVOID in, DWORD inBytes, LPVOID out,
                            DWORD outBytes, LPDWORD returnedBytes, LPOVERLAPPED overlapped);

// --- threads and waits ---
#define CREATE_SUSPENDED 0x00000004u
#define INFINITE 0xFFFFFFFFu
#define WAIT_OBJECT_0 0x00000000u
#define WAIT_ABANDONED 0x00000080u
#define WAIT_TIMEOUT 258u
#define WAIT_FAILED 0xFFFFFFFFu
DWORD WINAPI GetCurrentThreadId();
DWORD WINAPI GetCurrentProcessId();
[[noreturn]] void WINAPI ExitProcess(UINT exitCode);
DWORD WINAPI ResumeThread(HANDLE thread);
DWORD WINAPI WaitForSingleObject(HANDLE object, DWORD milliseconds);
HANDLE WINAPI CreateMutexW(LPSECURITY_ATTRIBUTES security, BOOL initialOwner, LPCWSTR name);
BOOL WINAPI ReleaseMutex(HANDLE mutex);

// Opaque; initialised and used through its functions alone.
struct CRITICAL_SECTION {
  void* opaque;
};
using LPCRITICAL_SECTION = CRITICAL_SECTION*;
void WINAPI InitializeCriticalSection(LPCRITICAL_SECTION section);
void WINAPI EnterCriticalSection(LPCRITICAL_SECTION section);
BOOL WINAPI TryEnterCriticalSection(LPCRITICAL_SECTION section);
void WINAPI LeaveCriticalSection(LPCRITICAL_SECTION section);
void WINAPI DeleteCriticalSection(LPCRITICAL_SECTION section);

// --- time ---
struct SYSTEMTIME {
  WORD wYear;
  WORD wMonth;
  WORD wDayOfWeek;
  WORD wDay;
  WORD wHour;
  WORD wMinute;
  WORD wSecond;
  WORD wMilliseconds;
};
using LPSYSTEMTIME = SYSTEMTIME*;
void WINAPI GetLocalTime(LPSYSTEMTIME time);
DWORD WINAPI GetTickCount();
void WINAPI Sleep(DWORD milliseconds);

// --- arithmetic ---
int WINAPI MulDiv(int number, int numerator, int denominator);

// --- messages ---
#define FORMAT_MESSAGE_ALLOCATE_BUFFER 0x00000100u
#define FORMAT_MESSAGE_FROM_HMODULE 0x00000800u
DWORD WINAPI FormatMessageW(DWORD flags, LPCVOID source, DWORD messageId, DWORD languageId,
                            LPWSTR buffer, DWORD size, va_list* arguments);

// --- process entry ---
int WINAPI wWinMain(HINSTANCE instance, HINSTANCE previous, LPWSTR commandLine, int show);

// --- event log ---
#define EVENTLOG_ERROR_TYPE 0x0001
#define EVENTLOG_WARNING_TYPE 0x0002
#define EVENTLOG_INFORMATION_TYPE 0x0004
HANDLE WINAPI RegisterEventSourceW(LPCWSTR server, LPCWSTR source);
BOOL WINAPI DeregisterEventSource(HANDLE eventLog);
BOOL WINAPI ReportEventW(HANDLE eventLog, WORD type, WORD category, DWORD eventId, PVOID userSid,
                         WORD stringCount, DWORD rawBytes, LPCWSTR* strings, LPVOID rawData);

}  // extern "C"
