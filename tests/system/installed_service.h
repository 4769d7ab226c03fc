// The real service in a program folder and a root folder of its own, worked through its command
// line and winsc inside a network namespace, as an administrator would on a machine.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "lab/network_namespace.h"

namespace service {

// A user of the WINDOWS logon system; what is not said is not limited.
struct Account {
  std::string name;
  bool allowedAtAnyHour = true;
};

class InstalledService {
 public:
  // Copies the program out of the build and installs the service; `place` outlives this object.
  explicit InstalledService(const lab::NetworkNamespace& place);
  ~InstalledService();  // kills it, if it still runs
  InstalledService(const InstalledService&) = delete;
  InstalledService& operator=(const InstalledService&) = delete;

  // From now on the user who is logged on to the system.
  void LogOnToSystem(const Account& account);

  // Starts and waits until the log holds the text; false when it does not come in 20 s.
  bool Start(const std::string& awaitedText);
  void Stop();
  void Kill();  // SIGKILL
  // Starts it and kills it so long after its process has come to be.
  void KillWhileStarting(std::chrono::microseconds after);

  // What winsc tells of the service's state.
  std::string State() const;
  // Everything the service has logged.
  std::string Log() const;
  // The rows of a statement, as the stock sqlite3 prints them.
  std::string Sql(const std::string& statement) const;

  const std::filesystem::path& ProgramFolder() const { return program_; }
  // A command inside the namespace with the service's root; answers the exit status.
  int Run(const std::string& command, std::string* output = nullptr) const;

 private:
  int KillProcesses() const;
  std::string Must(const std::string& command) const;

  const lab::NetworkNamespace& place_;
  std::filesystem::path folder_;
  std::filesystem::path program_;
};

}  // namespace service
