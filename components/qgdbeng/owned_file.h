// The files of a database as the system keeps them: their owner's alone, the process's own user or,
// on Windows, the administrators. One source for each system. Paths are UTF-8; failures throw
// OpenError.
#pragma once

#include <stdexcept>
#include <string>

namespace quillgate::engine {

// Why a file was not opened, for the user to read.
class OpenError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

[[noreturn]] inline void Fail(const std::string& reason, const std::string& path) {
  throw OpenError(reason + ": " + path);
}

// An absolute path: a name with a special meaning for SQLite is then a plain file name too.
std::string FullPath(const std::string& path);

// Makes the file, if it is missing, before SQLite can make it readable for others. What SQLite
// makes beside it afterwards is as closed to others as the file is.
void MakeFile(const std::string& path);

// Makes a file that exists its owner's alone, and refuses a link, what is no file, and what belongs
// to another user. The digests of passwords are in these files, and a lock on any of them, for
// which reading is enough, holds up whoever writes. One that came from elsewhere, such as a copy
// put back, may be open to others; whoever has opened it before this has it open still.
void KeepFromOthers(const std::string& path);

}  // namespace quillgate::engine
