// The layer's own keeper of services, for machines and root folders without systemd: it starts a
// service's process as a daemon and passes the service's lock on to it. Any thread.
#pragma once

#include "platform/service/service_keeper.h"

namespace platform {

class OwnKeeper final : public ServiceKeeper {
 public:
  // The record is all there is of a service that has no process.
  DWORD Configure(const ServiceRecord&, bool) override { return 0; }
  DWORD Remove(std::wstring_view) override { return 0; }

  // A process that does not call its dispatcher in time is killed.
  DWORD Start(const ServiceRecord& record) override;
  // The start itself publishes that the service starts.
  bool IsStarting(std::wstring_view) override { return false; }
  void NoteStop(std::wstring_view) override {}
};

}  // namespace platform
