// What passes over the control socket of a running service: one request and one reply for each
// connection, each a message of fixed size. Both ends are this layer on the same machine, so the
// structures travel as they lie in memory. Also the rules which control a service takes when.
#pragma once

#include <winsvc.h>

#include <cstdint>
#include <string_view>

namespace platform {

inline constexpr std::uint32_t kControlMagic = 0x4C525443;  // "CTRL"
inline constexpr std::uint32_t kControlVersion = 1;

struct ControlRequest {
  std::uint32_t magic = kControlMagic;
  std::uint32_t version = kControlVersion;
  DWORD control = 0;
};

struct ControlReply {
  std::uint32_t magic = kControlMagic;
  std::uint32_t version = kControlVersion;
  DWORD error = 0;
  SERVICE_STATUS status{};
};

// Whether a service in that status takes the control: 0, or the error of ControlService.
DWORD JudgeControl(const SERVICE_STATUS& status, DWORD control);

// The access that a handle needs for the control; 0: no control that ControlService can send.
DWORD AccessForControl(DWORD control);

// Sends the control to the process that runs the service and waits for its handler, 30 s at most.
// 0 when there is a reply, which may itself hold an error.
DWORD SendControl(std::wstring_view name, DWORD control, ControlReply& reply);

}  // namespace platform
