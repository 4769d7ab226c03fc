#include "components/database_folder.h"

#include <sched.h>
#include <stdlib.h>
#include <sys/mount.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

namespace quillgate {

DatabaseFolder::DatabaseFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "database-XXXXXX").native();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder " + name);
  path_ = name;
}

DatabaseFolder::~DatabaseFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string ReadFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void WriteFile(const std::filesystem::path& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

bool WithPrivateMounts(const std::function<void()>& work) {
  bool isPrivate = false;
  std::thread([&] {
    isPrivate = ::unshare(CLONE_NEWNS) == 0 &&
                ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    if (isPrivate) work();
  }).join();
  return isPrivate;
}

std::string StockSqlite(const std::filesystem::path& file, const std::string& sql) {
  const std::string command = "sqlite3 '" + file.native() + "' \"" + sql + "\" 2>&1";
  FILE* const pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("cannot run sqlite3");
  std::string answer;
  char buffer[256];
  while (std::fgets(buffer, sizeof buffer, pipe) != nullptr)
    answer += buffer;
  ::pclose(pipe);
  while (answer.ends_with('\n'))
    answer.pop_back();
  return answer;
}

}  // namespace quillgate
