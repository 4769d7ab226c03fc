#include "platform/service/control_message.h"

#include <algorithm>
#include <iterator>

namespace platform {
namespace {

struct ControlRule {
  DWORD first;
  DWORD last;
  DWORD access;
  DWORD accepted;  // needed in dwControlsAccepted; 0: nothing
};

constexpr DWORD kAcceptParameterChange = 0x00000008;
constexpr DWORD kAcceptNetBindChange = 0x00000010;

// Only the system sends shutdown (5) and the controls after the net binding ones, 11 to 127.
constexpr ControlRule kRules[] = {
    {SERVICE_CONTROL_STOP, SERVICE_CONTROL_STOP, SERVICE_STOP, SERVICE_ACCEPT_STOP},
    {SERVICE_CONTROL_PAUSE, SERVICE_CONTROL_CONTINUE, SERVICE_PAUSE_CONTINUE,
     SERVICE_ACCEPT_PAUSE_CONTINUE},
    {SERVICE_CONTROL_INTERROGATE, SERVICE_CONTROL_INTERROGATE, SERVICE_INTERROGATE, 0},
    {6, 6, SERVICE_PAUSE_CONTINUE, kAcceptParameterChange},
    {7, 10, SERVICE_PAUSE_CONTINUE, kAcceptNetBindChange},
    {128, 255, SERVICE_USER_DEFINED_CONTROL, 0},
};

const ControlRule* FindRule(DWORD control) {
  const auto* rule = std::ranges::find_if(kRules, [control](const ControlRule& each) {
    return control >= each.first && control <= each.last;
  });
  return rule == std::end(kRules) ? nullptr : rule;
}

// Drivers have no handler: they can only be stopped and interrogated.
bool DriverTakes(DWORD control) {
  return control == SERVICE_CONTROL_STOP || control == SERVICE_CONTROL_INTERROGATE;
}

}  // namespace

DWORD JudgeControl(const SERVICE_STATUS& status, DWORD control) {
  const ControlRule* rule = FindRule(control);
  if (rule == nullptr) return ERROR_INVALID_PARAMETER;
  if (status.dwCurrentState == SERVICE_STOPPED) return ERROR_SERVICE_NOT_ACTIVE;
  if (status.dwCurrentState == SERVICE_START_PENDING ||
      status.dwCurrentState == SERVICE_STOP_PENDING) {
    return ERROR_SERVICE_CANNOT_ACCEPT_CTRL;
  }
  const bool accepted = (status.dwControlsAccepted & rule->accepted) == rule->accepted;
  const bool driver = status.dwServiceType == SERVICE_KERNEL_DRIVER;
  return accepted && (!driver || DriverTakes(control)) ? NO_ERROR : ERROR_INVALID_SERVICE_CONTROL;
}

DWORD AccessForControl(DWORD control) {
  const ControlRule* rule = FindRule(control);
  return rule == nullptr ? 0 : rule->access;
}

}  // namespace platform
