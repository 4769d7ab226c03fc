#include "platform/user/window_list.h"

#include <algorithm>
#include <iterator>

namespace platform {

void WindowList::Add(const std::shared_ptr<Window>& window) {
  window->handle = static_cast<HWND>(Handles().Insert(HandleKind::kWindow, window));
  const std::lock_guard lock(mutex_);
  windows_.push_back(window);
}

void WindowList::Remove(const std::shared_ptr<Window>& window) {
  Handles().Remove(HandleKind::kWindow, window->handle);
  // After the handle, so that nothing can be added for the window any more.
  window->queue->DiscardMessagesOf(window->handle);
  window->queue->Timers().KillAllOf(window->handle);
  OnWindowEnded(window->handle);
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
  return Select([&](const auto& each) { return each->parent == window && each->isChild; });
}

std::vector<std::shared_ptr<Window>> WindowList::OwnedBy(HWND window) const {
  return Select([&](const auto& each) { return each->parent == window && !each->isChild; });
}

std::vector<std::shared_ptr<Window>> WindowList::TopLevel() const {
  return Select([](const auto& each) { return !each->isChild && each->parent != HWND_MESSAGE; });
}

std::vector<std::shared_ptr<Window>> WindowList::OfThread(const ThreadQueue& queue) const {
  return Select([&](const auto& each) { return each->queue.get() == &queue; });
}

bool WindowList::HasClass(const WindowClass& windowClass) const {
  return !Select([&](const auto& each) { return each->windowClass.get() == &windowClass; }).empty();
}

WindowList& Windows() {
  static WindowList& list = *new WindowList;
  return list;
}

}  // namespace platform
