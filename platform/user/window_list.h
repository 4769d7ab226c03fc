// Every live window of the process, in order of creation. Any thread.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "platform/user/window.h"

namespace platform {

class WindowList {
 public:
  // Creates the window's handle and adds the window.
  void Add(const std::shared_ptr<Window>& window);

  // Closes the handle and discards the messages and timers of the window. Called by the window's
  // thread.
  void Remove(const std::shared_ptr<Window>& window);

  // Children of the window, or the windows it owns, in order of creation.
  std::vector<std::shared_ptr<Window>> ChildrenOf(HWND window) const;
  std::vector<std::shared_ptr<Window>> OwnedBy(HWND window) const;
  // Without message-only windows (HWND_MESSAGE).
  std::vector<std::shared_ptr<Window>> TopLevel() const;
  std::vector<std::shared_ptr<Window>> OfThread(const ThreadQueue& queue) const;
  bool HasClass(const WindowClass& windowClass) const;

 private:
  template <class Condition>
  std::vector<std::shared_ptr<Window>> Select(Condition condition) const;

  mutable std::mutex mutex_;
  std::vector<std::shared_ptr<Window>> windows_;
};

WindowList& Windows();

// Releases what families above this one keep for the window. Defined by the wiring.
void OnWindowEnded(HWND window);

}  // namespace platform
