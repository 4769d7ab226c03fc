// The service that the package works for: where its program lies, and its controls. Used on the
// stack of one event.
#pragma once

#include <windows.h>
#include <winsvc.h>

#include <string>

namespace quillgate::notifier {

class ServiceLink {
 public:
  ServiceLink();
  ~ServiceLink();
  ServiceLink(const ServiceLink&) = delete;
  ServiceLink& operator=(const ServiceLink&) = delete;

  bool IsInstalled() const { return !folder_.empty(); }

  // The folder of the service's program, with the separator at its end. Its database and the
  // engine library lie there.
  const std::wstring& Folder() const { return folder_; }

  // Sends a control. A service that does not run needs none: it reads the stored name when it
  // starts. One that is starting or stopping is waited for, 30 s at most.
  void Send(DWORD control) const;

 private:
  SC_HANDLE manager_;
  SC_HANDLE service_;
  std::wstring folder_;
};

}  // namespace quillgate::notifier
