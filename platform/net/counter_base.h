// The counters of links by name, such that they never fall: a card that was pulled and put back
// begins at 0, but what it had counted before was counted. For each name there is a base that is
// added to what the link itself tells, and which grows by the last reading when the link begins
// anew. Each process has its own. Whoever owns it lets in one thread at a time and tells it of
// readings and of what happened to links in the order in which it happened.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "platform/net/interface_source.h"

namespace platform {

struct LinkReading {
  std::wstring name;
  std::uint32_t index = 0;
  InterfaceCounters counters;  // the link's own
};

class CounterBase {
 public:
  // A link was asked: its counters over all of its lives. One that has the name for the first time
  // begins with what it tells. Of a later one of which nobody has told that it came, all counts.
  InterfaceCounters Read(const LinkReading& reading);

  // A link came, or changed, and stands at these counters. What it has counted before it got the
  // name (elsewhere, or under another name) does not count. Names that nobody has read are passed
  // over, here and below.
  void Came(const LinkReading& reading);

  // A link went, and that was its last moment.
  void Went(const LinkReading& last);
  // There is no link of that name.
  void Missed(std::wstring_view name);

  // The counters as far as they are known; those of the reading itself for a name never read.
  InterfaceCounters Latest(const LinkReading& reading) const;

 private:
  struct Known {
    std::uint32_t index = 0;
    InterfaceCounters last;
    InterfaceCounters base;
    std::uint64_t wentAs = 0;  // the number of its going; 0: it is there
  };

  void MarkGone(Known& known);
  void ForgetOldest();

  std::map<std::wstring, Known, std::less<>> known_;
  std::uint64_t gone_ = 0;  // how often any has gone
};

}  // namespace platform
