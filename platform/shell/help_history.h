// The topics that the user of the help viewer has seen, for its Back and Forward. Owned by the
// viewer's window, on its thread.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/shell/help_location.h"

namespace platform {

class HelpHistory {
 public:
  // Adds a topic after the current one, in the place of those that Forward would show. Ignored for
  // the current one. The oldest of too many is dropped.
  void Visit(const HelpTarget& target);

  bool CanGoBack() const { return at_ > 1; }
  bool CanGoForward() const { return at_ < visited_.size(); }
  // Ignored when there is none.
  void GoBack();
  void GoForward();
  // The current topic; an empty target before the first.
  HelpTarget Current() const;

 private:
  std::vector<HelpTarget> visited_;
  std::size_t at_ = 0;  // the number of topics up to the current one
};

}  // namespace platform
