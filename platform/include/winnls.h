// Code pages, languages and locales.
#pragma once

#include <windef.h>

extern "C" {

// The process's multibyte code page is UTF-8, so CP_ACP means CP_UTF8 here.
#define CP_ACP 0u
#define CP_UTF8 65001u
#define MB_ERR_INVALID_CHARS 0x00000008u
int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCCH text, int bytes, LPWSTR wide,
                               int wideCharacters);
int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, LPCWCH wide, int wideCharacters,
                               LPSTR text, int bytes, LPCCH defaultCharacter,
                               LPBOOL usedDefaultCharacter);

#define LANG_NEUTRAL 0x00
#define LANG_ENGLISH 0x09
#define LANG_SWEDISH 0x1d
#define SUBLANG_NEUTRAL 0x00
#define SUBLANG_DEFAULT 0x01
#define MAKELANGID(primary, sub) \
  (static_cast<WORD>((static_cast<WORD>(sub) << 10) | static_cast<WORD>(primary)))
#define PRIMARYLANGID(language) (static_cast<WORD>(static_cast<WORD>(language) & 0x3ff))
#define LOCALE_USER_DEFAULT 0x0400u
#define LOCALE_SYSTEM_DEFAULT 0x0800u

#define LOCALE_SNATIVELANGNAME 0x00000004u
#define LOCALE_IFIRSTDAYOFWEEK 0x0000100Cu
LANGID WINAPI GetSystemDefaultLangID();
LANGID WINAPI GetSystemDefaultUILanguage();
LANGID WINAPI SetThreadUILanguage(LANGID language);
int WINAPI GetLocaleInfoW(LCID locale, LCTYPE type, LPWSTR data, int characters);

// Only the locale's own formats: the format parameters are null.
struct NUMBERFMTW;
struct SYSTEMTIME;
#define DATE_SHORTDATE 0x00000001u
#define TIME_NOSECONDS 0x00000002u
int WINAPI GetNumberFormatW(LCID locale, DWORD flags, LPCWSTR value, const NUMBERFMTW* format,
                            LPWSTR text, int characters);
int WINAPI GetDateFormatW(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCWSTR format,
                          LPWSTR text, int characters);
int WINAPI GetTimeFormatW(LCID locale, DWORD flags, const SYSTEMTIME* time, LPCWSTR format,
                          LPWSTR text, int characters);

}  // extern "C"
