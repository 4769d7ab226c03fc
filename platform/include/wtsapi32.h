// Notifications of terminal sessions. The functions are found at run time in wtsapi32.dll.
#pragma once

#include <windef.h>

#define NOTIFY_FOR_ALL_SESSIONS 1u
