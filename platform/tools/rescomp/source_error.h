// The one error of the resource compiler: what is wrong, and where in the file that a person wrote.
// Its text is "file:line: what", as editors expect it.
#pragma once

#include <stdexcept>
#include <string>

namespace rescomp {

struct SourcePlace {
  std::string file;
  unsigned line = 0;
};

class SourceError : public std::runtime_error {
 public:
  SourceError(const SourcePlace& place, const std::string& what)
      : std::runtime_error(place.file + ":" + std::to_string(place.line) + ": " + what) {}
};

}  // namespace rescomp
