// IP Helper: adapters and the interface table.
#pragma once

#include <iptypes.h>

#include <windef.h>
#include <winerror.h>

extern "C" {

#define MAX_INTERFACE_NAME_LEN 256
#define MAXLEN_IFDESCR 256
#define MAXLEN_PHYSADDR 8
#define ANY_SIZE 1

struct MIB_IFROW {
  WCHAR wszName[MAX_INTERFACE_NAME_LEN];
  DWORD dwIndex;
  DWORD dwType;
  DWORD dwMtu;
  DWORD dwSpeed;
  DWORD dwPhysAddrLen;
  BYTE bPhysAddr[MAXLEN_PHYSADDR];
  DWORD dwAdminStatus;
  DWORD dwOperStatus;
  DWORD dwLastChange;
  DWORD dwInOctets;
  DWORD dwInUcastPkts;
  DWORD dwInNUcastPkts;
  DWORD dwInDiscards;
  DWORD dwInErrors;
  DWORD dwInUnknownProtos;
  DWORD dwOutOctets;
  DWORD dwOutUcastPkts;
  DWORD dwOutNUcastPkts;
  DWORD dwOutDiscards;
  DWORD dwOutErrors;
  DWORD dwOutQLen;
  DWORD dwDescrLen;
  BYTE bDescr[MAXLEN_IFDESCR];
};
using PMIB_IFROW = MIB_IFROW*;

struct MIB_IFTABLE {
  DWORD dwNumEntries;
  MIB_IFROW table[ANY_SIZE];
};
using PMIB_IFTABLE = MIB_IFTABLE*;

DWORD WINAPI GetIfTable(PMIB_IFTABLE table, PULONG bytes, BOOL order);
DWORD WINAPI GetIfEntry(PMIB_IFROW row);
DWORD WINAPI GetAdaptersInfo(PIP_ADAPTER_INFO adapters, PULONG bytes);
DWORD WINAPI GetPerAdapterInfo(ULONG index, PIP_PER_ADAPTER_INFO info, PULONG bytes);

}  // extern "C"
