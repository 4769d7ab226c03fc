// Who starts and stops the processes of services: systemd where it runs, else the layer's own
// keeper. Drivers have no keeper: they live in the process that starts them. Errors are Win32
// codes, 0 is success. Used by one thread at a time; any thread.
#pragma once

#include <windef.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/service/service_database.h"

namespace platform {

class ServiceKeeper {
 public:
  virtual ~ServiceKeeper() = default;

  // The service was created or its configuration has changed. Unless its start type has, a change
  // that an administrator has made to it by other means stays. After an error the caller takes the
  // record back.
  virtual DWORD Configure(const ServiceRecord& record, bool hasNewStartType) = 0;
  // The service is to be deleted: it starts no more. Its process, if there is one, goes on. Calling
  // it again is fine.
  virtual DWORD Remove(std::wstring_view name) = 0;

  // Starts the process and waits until its dispatcher has taken the service over, 30 s at most. The
  // errors are those of StartServiceW.
  virtual DWORD Start(const ServiceRecord& record) = 0;
  // Whether the process is being started and has not taken the service over yet.
  virtual bool IsStarting(std::wstring_view name) = 0;
  // The process has taken the stop control, or there is none to take it: the service shall not be
  // started again by itself.
  virtual void NoteStop(std::wstring_view name) = 0;
};

// The keeper of this machine's services. systemd's when it has booted the machine, its bus can be
// reached and the root folder is the machine's; a root folder of somebody's own has services of its
// own, which systemd does not know.
std::unique_ptr<ServiceKeeper> CurrentKeeper();

// Whether systemd takes the machine down, or restarts it. False without systemd.
bool IsMachineGoingDown();

// A systemd and the folders that it shares with the layer.
struct SystemdPlace {
  std::string busAddress;
  std::filesystem::path units;         // unit files, which outlive the machine's restart
  std::filesystem::path environments;  // what the last start of a service has passed on to it
};
// Takes that systemd for the machine's, whatever the root folder is; nullopt: the machine's again.
void SetSystemdPlace(std::optional<SystemdPlace> place);

}  // namespace platform
