#include "platform/shell/help_history.h"

namespace platform {
namespace {

constexpr std::size_t kMostVisited = 200;

}  // namespace

void HelpHistory::Visit(const HelpTarget& target) {
  if (at_ > 0 && visited_[at_ - 1] == target) return;
  visited_.resize(at_);
  visited_.push_back(target);
  if (visited_.size() > kMostVisited) visited_.erase(visited_.begin());
  at_ = visited_.size();
}

void HelpHistory::GoBack() {
  if (CanGoBack()) --at_;
}

void HelpHistory::GoForward() {
  if (CanGoForward()) ++at_;
}

HelpTarget HelpHistory::Current() const {
  return at_ > 0 ? visited_[at_ - 1] : HelpTarget();
}

}  // namespace platform
