// Creates and protects the files of a database: only their owner has access. The owner is the
// process's user or, on Windows, the administrators. There is one source file per system. Paths are
// UTF-8; failures throw OpenError.
#pragma once

#include <stdexcept>
#include <string>

namespace quillgate::engine {

// Why a file was not opened, as a text for the user.
class OpenError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

[[noreturn]] inline void Fail(const std::string& reason, const std::string& path) {
  throw OpenError(reason + ": " + path);
}

// Returns an absolute path. SQLite then takes a name with a special meaning as a plain file name,
// too.
std::string FullPath(const std::string& path);

// Creates the file when it is missing, before SQLite could create it readable for others. The files
// that SQLite creates beside it later are restricted like this one.
void MakeFile(const std::string& path);

// Restricts an existing file to its owner. Refuses links, whatever is not a regular file, and files
// of another user. These files hold digests of passwords, and a lock on any of them, for which read
// access is enough, blocks writers. A file that came from elsewhere, such as a restored copy, may
// be open to others. A process that has opened it before keeps it open.
void KeepFromOthers(const std::string& path);

}  // namespace quillgate::engine
