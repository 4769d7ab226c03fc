#include "platform/user/window_list.h"

#include <algorithm>
#include <iterator>

namespace platform {

void WindowList::Add(const std::shared_ptr<Window>& window) {
  window->TakeHandle(static_cast<HWND>(Handles().Insert(HandleKind::kWindow, window)));
  const std::lock_guard lock(mutex_);
  windows_.push_back(window);
}

void WindowList::Remove(const std::shared_ptr<Window>& window) {
  Handles().Remove(HandleKind::kWindow, window->Handle());
  // After the handle is closed, so that no message or timer can be added for the window.
  window->Queue()->DiscardMessagesOf(window->Handle());
  window->Queue()->Timers().KillAllOf(window->Handle());
  OnWindowEnded(window->Handle());
  const std::lock_guard lock(mutex_);
  std::erase(windows_, window);
}

template <class Condition>
std::vector<std::shared_ptr<Window>> WindowList::Select(Condition condition) const {
  const std::lock_guard lock(mutex_);
  std::vector<std::shared_ptr<Window>> selected;
  std::ranges::copy_if(windows_, std::back_inserter(selected), condition);
  return selected;
}

std::vector<std::shared_ptr<Window>> WindowList::ChildrenOf(HWND window) const {
  return Select([&](const auto& each) { return each->Parent() == window && each->IsChild(); });
}

std::vector<std::shared_ptr<Window>> WindowList::OwnedBy(HWND window) const {
  return Select([&](const auto& each) { return each->Parent() == window && !each->IsChild(); });
}

std::vector<std::shared_ptr<Window>> WindowList::TopLevel() const {
  return Select(
      [](const auto& each) { return !each->IsChild() && each->Parent() != HWND_MESSAGE; });
}

std::vector<std::shared_ptr<Window>> WindowList::OfThread(const ThreadQueue& queue) const {
  return Select([&](const auto& each) { return each->Queue().get() == &queue; });
}

bool WindowList::HasClass(const WindowClass& windowClass) const {
  return !Select([&](const auto& each) { return each->Class().get() == &windowClass; }).empty();
}

WindowList& Windows() {
  static WindowList& list = *new WindowList;
  return list;
}

}  // namespace platform
