// A folder of a test's own, removed at the end, and threads that see file systems nobody else sees.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace quillgate {

class DatabaseFolder {
 public:
  DatabaseFolder();
  ~DatabaseFolder();
  DatabaseFolder(const DatabaseFolder&) = delete;
  DatabaseFolder& operator=(const DatabaseFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path File() const { return path_ / "quillgate.dat"; }

 private:
  std::filesystem::path path_;
};

std::string ReadFile(const std::filesystem::path& file);
void WriteFile(const std::filesystem::path& file, const std::string& bytes);

// Runs `work` on a thread with a mount namespace of its own, so that what it mounts is seen by that
// thread alone and goes with it. False when this process may not have one; `work` did not run then.
bool WithPrivateMounts(const std::function<void()>& work);

// The answer of the stock command to one statement, for example "ok" for "PRAGMA integrity_check".
std::string StockSqlite(const std::filesystem::path& file, const std::string& sql);

}  // namespace quillgate
