// A folder of a test's own, removed at the end, and the database in it as other programs see it.
#pragma once

#include <filesystem>
#include <string>

namespace lab {

class DatabaseFolder {
 public:
  DatabaseFolder();
  ~DatabaseFolder();
  DatabaseFolder(const DatabaseFolder&) = delete;
  DatabaseFolder& operator=(const DatabaseFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path File() const { return path_ / "quillgate.dat"; }

  // What the stock sqlite3 prints for a script, for example "ok" for "PRAGMA integrity_check;";
  // failures too. Without the end of the last line.
  std::string StockSqlite(const std::string& script) const;

 private:
  std::filesystem::path path_;
};

std::string ReadFile(const std::filesystem::path& file);
void WriteFile(const std::filesystem::path& file, const std::string& bytes);

}  // namespace lab
