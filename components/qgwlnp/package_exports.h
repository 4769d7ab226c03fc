// The functions of the logon notification package. The logon process calls the events, one after
// the other; an installer calls the registration. No exceptions leave these functions.
#pragma once

#include <windows.h>
#include <winwlx.h>

#pragma GCC visibility push(default)
extern "C" {

// The system has started: nobody is logged on, whatever was stored when it went down. Returns when
// that is removed.
void WINAPI WLEventStartup(PWLX_NOTIFICATION_INFO info) noexcept;

// Stores the user's name, then notifies the service. A name that cannot be stored within a minute
// leaves nobody logged on.
void WINAPI WLEventLogon(PWLX_NOTIFICATION_INFO info) noexcept;

// Notifies the service, removes the name, however long that takes, and notifies the service again.
void WINAPI WLEventLogoff(PWLX_NOTIFICATION_INFO info) noexcept;

// Enters the package into the registry, or removes it. The service must be installed: the package
// lies beside its program.
HRESULT WINAPI DllRegisterServer() noexcept;
HRESULT WINAPI DllUnregisterServer() noexcept;

}  // extern "C"
#pragma GCC visibility pop
