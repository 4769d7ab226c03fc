// The messages on the control socket of a running service: one request and one reply for each
// connection, each of fixed size. Client and server are this layer on the same machine, so the
// structures are sent as they are in memory. Also the rules that say when a service accepts a
// control. Any thread.
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

// Whether a service in that status accepts the control: 0, or the error of ControlService.
DWORD JudgeControl(const SERVICE_STATUS& status, DWORD control);

// The access that a handle needs for the control; 0: ControlService cannot send it.
DWORD AccessForControl(DWORD control);

// Sends the control to the process that runs the service and waits for the reply, which is sent
// when the handler has returned; 30 s at most. 0 when there is a reply, which may itself contain an
// error.
DWORD SendControl(std::wstring_view name, DWORD control, ControlReply& reply);

}  // namespace platform
