#include "lab/database_folder.h"

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace lab {

DatabaseFolder::DatabaseFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "database-XXXXXX").native();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder " + name);
  path_ = name;
}

DatabaseFolder::~DatabaseFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string DatabaseFolder::StockSqlite(const std::string& script) const {
  WriteFile(path_ / "script", script);
  const std::string command =
      "cd '" + path_.native() + "' && sqlite3 '" + File().native() + "' <script >answer 2>&1";
  if (std::system(command.c_str()) == -1) throw std::runtime_error("cannot run sqlite3");
  std::string answer = ReadFile(path_ / "answer");
  if (answer.ends_with('\n')) answer.pop_back();
  return answer;
}

std::string ReadFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void WriteFile(const std::filesystem::path& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

}  // namespace lab
