#include "platform/dialog/modal_dialog.h"

#include <utility>

#include "platform/user/modal_loop.h"
#include "platform/user/window_relations.h"

namespace platform {

DisabledOwner::DisabledOwner(HWND window) {
  const auto found = Resolve<Window>(HandleKind::kWindow, window);
  const auto topLevel = found != nullptr ? TopLevelOf(found) : nullptr;
  if (topLevel != nullptr) window_ = topLevel->Handle();
  disabled_ = window_ != nullptr && ::EnableWindow(window_, FALSE) == FALSE;
}

void DisabledOwner::Enable() {
  if (!std::exchange(disabled_, false) || !::IsWindow(window_)) return;
  ::EnableWindow(window_, TRUE);
  if (::IsWindowVisible(window_)) ::SetForegroundWindow(window_);
}

INT_PTR AwaitEnd(HWND dialog, DisabledOwner& owner, INT_PTR onQuit) {
  const FoundDialog found = FindDialog(dialog);
  if (found.control == nullptr) return 0;
  const std::shared_ptr<DialogOutcome> outcome = found.control->Outcome();
  const LoopEnd end = RunModalLoop(*found.window->Queue(), [&] { return outcome->ended; });
  owner.Enable();
  if (::IsWindow(dialog)) ::DestroyWindow(dialog);
  return end == LoopEnd::kQuit ? onQuit : outcome->result;
}

}  // namespace platform
