// Statistics of network drivers, read through their devices.
#pragma once

#include <winioctl.h>

#define IOCTL_NDIS_QUERY_GLOBAL_STATS \
  CTL_CODE(FILE_DEVICE_PHYSICAL_NETCARD, 0u, METHOD_OUT_DIRECT, FILE_ANY_ACCESS)

#define OID_GEN_DIRECTED_BYTES_XMIT 0x00020201u
#define OID_GEN_DIRECTED_BYTES_RCV 0x00020207u
#define OID_802_3_CURRENT_ADDRESS 0x01010102u
