// Counters of links by name that never decrease. The kernel's counters of a link start at 0 when a
// card is removed and inserted again. So each name has a base, which is added to the link's own
// counters; when the link starts anew, the base grows by the last reading. Each process has its own
// bases. Not synchronized: the owner calls from one thread at a time, and reports readings and
// changes of links in the order in which they happened.
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
  // A link was read. Returns its counters, including those of earlier links of that name. The first
  // link of a name starts with its own counters. A later link whose arrival was not reported to
  // Came counts from 0.
  InterfaceCounters Read(const LinkReading& reading);

  // A link appeared or changed, with these counters. What it counted before it got the name (in
  // another namespace, or under another name) is not added. Here and below, names that were never
  // read are ignored.
  void Came(const LinkReading& reading);

  // A link was removed, with these last counters.
  void Went(const LinkReading& last);
  // A reading found no link of that name.
  void Missed(std::wstring_view name);

  // The counters up to the last reading or report; those in `reading` for a name never read.
  InterfaceCounters Latest(const LinkReading& reading) const;

 private:
  struct Tracked {
    std::uint32_t index = 0;
    InterfaceCounters last;
    InterfaceCounters base;
    std::uint64_t removal = 0;  // the removal's number; 0: the link exists
  };

  void MarkRemoved(Tracked& tracked);
  void EvictOldest();

  std::map<std::wstring, Tracked, std::less<>> links_;
  std::uint64_t removals_ = 0;  // the number of removals so far
};

}  // namespace platform
