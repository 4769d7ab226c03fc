// Limits of the account functions.
#pragma once

#define MAX_PREFERRED_LENGTH (static_cast<DWORD>(-1))
