// Numbers, durations, dates and times in the user's locale. A text that the system cannot format,
// or that has more than 64 characters with its terminator, is empty. Any thread.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace quillgate {

// Without decimals, grouped, as in "1,048,576".
std::wstring FormatInteger(std::uint64_t value);

// With two decimals, as in "1,048.58".
std::wstring FormatDecimal(double value);

// "hh:mm:ss" in every locale; hours past 99 have as many digits as they need.
std::wstring FormatDuration(std::uint64_t seconds);

// The short date, and the time of day without seconds.
std::wstring FormatDate(const SYSTEMTIME& date);
std::wstring FormatTime(const SYSTEMTIME& time);

}  // namespace quillgate
