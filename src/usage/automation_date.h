// OLE automation dates: days since 1899-12-30 as a double, valid from -657434 to 2958465.
#pragma once

#include <windows.h>
#include <oleauto.h>

#include <string>

namespace quillgate {

// One day before the smallest valid date; marks an invalid date.
inline constexpr DATE kInvalidDate = -657435.0;

// The current local time in whole seconds; kInvalidDate when it cannot be converted.
DATE LocalNow();

// A calendar day at 00:00:00; kInvalidDate when there is no such day (see SystemTimeToVariantTime).
DATE DateOf(int year, int month, int day);

// "2005-03-14 18:05:09" and "2005-03-14"; both empty for an invalid date.
std::wstring FormatTimestamp(DATE date);
std::wstring FormatDay(DATE date);

}  // namespace quillgate
