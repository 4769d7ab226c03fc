// OLE automation dates: days since 1899-12-30 as a double.
#pragma once

#include <windows.h>

extern "C" {

int WINAPI SystemTimeToVariantTime(LPSYSTEMTIME time, DATE* date);
int WINAPI VariantTimeToSystemTime(DATE date, LPSYSTEMTIME time);

}  // extern "C"
