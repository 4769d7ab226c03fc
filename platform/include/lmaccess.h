// Accounts of the local machine.
#pragma once

#include <windef.h>
#include <winerror.h>

extern "C" {

using NET_API_STATUS = DWORD;

struct NET_DISPLAY_USER {
  LPWSTR usri1_name;
  LPWSTR usri1_comment;
  DWORD usri1_flags;
  LPWSTR usri1_full_name;
  DWORD usri1_user_id;
  DWORD usri1_next_index;
};

NET_API_STATUS WINAPI NetQueryDisplayInformation(LPCWSTR server, DWORD level, DWORD index,
                                                 DWORD entriesRequested,
                                                 DWORD preferredMaximumBytes, LPDWORD entryCount,
                                                 PVOID* buffer);

}  // extern "C"
