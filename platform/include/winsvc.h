// The service control manager and the service's own side of it.
#pragma once

#include <windef.h>
#include <winerror.h>

extern "C" {

DECLARE_HANDLE(SC_HANDLE);
DECLARE_HANDLE(SERVICE_STATUS_HANDLE);

#define DELETE 0x00010000u
#define SC_MANAGER_CONNECT 0x0001u
#define SC_MANAGER_CREATE_SERVICE 0x0002u
#define SC_MANAGER_ALL_ACCESS 0xF003Fu
#define SERVICE_QUERY_CONFIG 0x0001u
#define SERVICE_CHANGE_CONFIG 0x0002u
#define SERVICE_QUERY_STATUS 0x0004u
#define SERVICE_START 0x0010u
#define SERVICE_STOP 0x0020u
#define SERVICE_PAUSE_CONTINUE 0x0040u
#define SERVICE_INTERROGATE 0x0080u
#define SERVICE_USER_DEFINED_CONTROL 0x0100u
#define SERVICE_ALL_ACCESS 0xF01FFu

#define SERVICE_KERNEL_DRIVER 0x00000001u
#define SERVICE_WIN32_OWN_PROCESS 0x00000010u
#define SERVICE_INTERACTIVE_PROCESS 0x00000100u
#define SERVICE_BOOT_START 0x00000000u
#define SERVICE_SYSTEM_START 0x00000001u
#define SERVICE_AUTO_START 0x00000002u
#define SERVICE_DEMAND_START 0x00000003u
#define SERVICE_DISABLED 0x00000004u
#define SERVICE_ERROR_NORMAL 0x00000001u
#define SERVICE_NO_CHANGE 0xFFFFFFFFu

#define SERVICE_STOPPED 0x00000001u
#define SERVICE_START_PENDING 0x00000002u
#define SERVICE_STOP_PENDING 0x00000003u
#define SERVICE_RUNNING 0x00000004u
#define SERVICE_PAUSED 0x00000007u
#define SERVICE_ACCEPT_STOP 0x00000001u
#define SERVICE_ACCEPT_PAUSE_CONTINUE 0x00000002u
#define SERVICE_CONTROL_STOP 0x00000001u
#define SERVICE_CONTROL_PAUSE 0x00000002u
#define SERVICE_CONTROL_CONTINUE 0x00000003u
#define SERVICE_CONTROL_INTERROGATE 0x00000004u
#define SERVICE_CONTROL_SHUTDOWN 0x00000005u

struct SERVICE_STATUS {
  DWORD dwServiceType;
  DWORD dwCurrentState;
  DWORD dwControlsAccepted;
  DWORD dwWin32ExitCode;
  DWORD dwServiceSpecificExitCode;
  DWORD dwCheckPoint;
  DWORD dwWaitHint;
};
using LPSERVICE_STATUS = SERVICE_STATUS*;

struct SERVICE_STATUS_PROCESS {
  DWORD dwServiceType;
  DWORD dwCurrentState;
  DWORD dwControlsAccepted;
  DWORD dwWin32ExitCode;
  DWORD dwServiceSpecificExitCode;
  DWORD dwCheckPoint;
  DWORD dwWaitHint;
  DWORD dwProcessId;
  DWORD dwServiceFlags;
};
enum SC_STATUS_TYPE { SC_STATUS_PROCESS_INFO = 0 };

struct QUERY_SERVICE_CONFIGW {
  DWORD dwServiceType;
  DWORD dwStartType;
  DWORD dwErrorControl;
  LPWSTR lpBinaryPathName;
  LPWSTR lpLoadOrderGroup;
  DWORD dwTagId;
  LPWSTR lpDependencies;
  LPWSTR lpServiceStartName;
  LPWSTR lpDisplayName;
};
using LPQUERY_SERVICE_CONFIGW = QUERY_SERVICE_CONFIGW*;

using LPSERVICE_MAIN_FUNCTIONW = void(WINAPI*)(DWORD argumentCount, LPWSTR* arguments);
using LPHANDLER_FUNCTION = void(WINAPI*)(DWORD control);
struct SERVICE_TABLE_ENTRYW {
  LPWSTR lpServiceName;
  LPSERVICE_MAIN_FUNCTIONW lpServiceProc;
};

SC_HANDLE WINAPI OpenSCManagerW(LPCWSTR machine, LPCWSTR database, DWORD access);
SC_HANDLE WINAPI CreateServiceW(SC_HANDLE manager, LPCWSTR serviceName, LPCWSTR displayName,
                                DWORD access, DWORD serviceType, DWORD startType,
                                DWORD errorControl, LPCWSTR binaryPath, LPCWSTR loadOrderGroup,
                                LPDWORD tagId, LPCWSTR dependencies, LPCWSTR account,
                                LPCWSTR password);
SC_HANDLE WINAPI OpenServiceW(SC_HANDLE manager, LPCWSTR serviceName, DWORD access);
BOOL WINAPI ChangeServiceConfigW(SC_HANDLE service, DWORD serviceType, DWORD startType,
                                 DWORD errorControl, LPCWSTR binaryPath, LPCWSTR loadOrderGroup,
                                 LPDWORD tagId, LPCWSTR dependencies, LPCWSTR account,
                                 LPCWSTR password, LPCWSTR displayName);
BOOL WINAPI QueryServiceConfigW(SC_HANDLE service, LPQUERY_SERVICE_CONFIGW config, DWORD bytes,
                                LPDWORD bytesNeeded);
BOOL WINAPI QueryServiceStatus(SC_HANDLE service, LPSERVICE_STATUS status);
BOOL WINAPI QueryServiceStatusEx(SC_HANDLE service, SC_STATUS_TYPE infoLevel, LPBYTE buffer,
                                 DWORD bytes, LPDWORD bytesNeeded);
BOOL WINAPI StartServiceW(SC_HANDLE service, DWORD argumentCount, LPCWSTR* arguments);
BOOL WINAPI ControlService(SC_HANDLE service, DWORD control, LPSERVICE_STATUS status);
BOOL WINAPI DeleteService(SC_HANDLE service);
BOOL WINAPI CloseServiceHandle(SC_HANDLE handle);

BOOL WINAPI StartServiceCtrlDispatcherW(const SERVICE_TABLE_ENTRYW* table);
SERVICE_STATUS_HANDLE WINAPI RegisterServiceCtrlHandlerW(LPCWSTR serviceName,
                                                         LPHANDLER_FUNCTION handler);
BOOL WINAPI SetServiceStatus(SERVICE_STATUS_HANDLE handle, LPSERVICE_STATUS status);

}  // extern "C"
