// Atoms: names and the numbers that stand for them, from the range that window classes and
// registered messages share (0xC000 to 0xFFFF). Names are compared without regard to case. An atom
// is never deleted. One table per process; any thread.
#pragma once

#include <windef.h>

#include <map>
#include <mutex>
#include <string>
#include <string_view>

namespace platform {

class AtomTable {
 public:
  // Adds the name if needed and returns its atom; 0 when every atom is in use.
  ATOM Add(std::wstring_view name);

  // The atom of a name that has been added; 0 for any other name.
  ATOM Find(std::wstring_view name) const;

 private:
  mutable std::mutex mutex_;
  std::map<std::wstring, ATOM> atoms_;
};

AtomTable& Atoms();

}  // namespace platform
