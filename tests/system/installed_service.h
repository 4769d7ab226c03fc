// The real service in a program folder and a root folder of its own, worked through its command
// line and winsc inside a network namespace, as an administrator would on a machine.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "lab/database_folder.h"
#include "lab/network_namespace.h"

namespace service {

class InstalledService {
 public:
  // Copies the program out of the build and installs the service; `place` outlives this object.
  explicit InstalledService(const lab::NetworkNamespace& place);
  ~InstalledService();  // kills it, if it still runs
  InstalledService(const InstalledService&) = delete;
  InstalledService& operator=(const InstalledService&) = delete;

  // From now on the user anna is logged on to the system, who may connect at any hour or at none.
  void LogOnToSystem(bool mayConnect);

  // Starts and waits until the log holds the text; false when it does not come in 20 s.
  bool Start(const std::string& awaitedText);
  void Stop() { Must("./winsc stop qgserv"); }
  void Kill();  // SIGKILL; returns when it counts as stopped
  // Starts it and kills it so long after its process has come to be.
  void KillWhileStarting(std::chrono::microseconds after);

  // Everything the service has logged.
  std::string Log() const { return lab::ReadFile(Folder() / "root/services/qgserv.log"); }
  // What the stock sqlite3 answers.
  std::string Sql(const std::string& statements) const;

  // Of the program, its database and its root.
  const std::filesystem::path& Folder() const { return folder_.Path(); }
  // Puts a file of the build beside the program.
  void Copy(const std::string& file) const;
  // A command in that folder and the namespace, with the service's root; answers the exit status.
  int Run(const std::string& command, std::string* output = nullptr) const;
  // What the command printed; throws std::runtime_error with it on failure.
  std::string Must(const std::string& command) const;

 private:
  int KillProcesses() const;

  const lab::NetworkNamespace& place_;
  lab::DatabaseFolder folder_;
};

}  // namespace service
