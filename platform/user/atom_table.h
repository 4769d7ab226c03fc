// Names and the numbers that stand for them, from the range that window classes and registered
// messages share (0xC000 to 0xFFFF). Names are compared without regard to case and are never
// forgotten. One table per process; any thread.
#pragma once

#include <windef.h>

#include <map>
#include <mutex>
#include <string>
#include <string_view>

namespace platform {

class AtomTable {
 public:
  // The name's number, made on first use; 0 when every number is taken.
  ATOM Add(std::wstring_view name);

  // The number of a name that has been added; 0 for any other.
  ATOM Find(std::wstring_view name) const;

 private:
  mutable std::mutex mutex_;
  std::map<std::wstring, ATOM> atoms_;
};

AtomTable& Atoms();

}  // namespace platform
