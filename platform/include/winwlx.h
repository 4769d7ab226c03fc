// What a logon notification package is called with.
#pragma once

#include <windef.h>

extern "C" {

using PFNMSGECALLBACK = DWORD (*)(BOOL verbose, LPWSTR message);

struct WLX_NOTIFICATION_INFO {
  ULONG Size;
  ULONG Flags;
  LPWSTR UserName;
  LPWSTR Domain;
  LPWSTR WindowStation;
  HANDLE hToken;
  HDESK hDesktop;
  PFNMSGECALLBACK pStatusCallback;
};
using PWLX_NOTIFICATION_INFO = WLX_NOTIFICATION_INFO*;

}  // extern "C"
