// Objects that can be selected into device contexts: fonts, pens, brushes, bitmaps. Any thread.
#pragma once

#include <windows.h>

#include <atomic>
#include <memory>
#include <utility>

#include "platform/kernel/handle_table.h"

namespace platform {

class Selectable : public Object {
 public:
  // Stock objects are never deleted.
  bool isStock = false;
  // The number of device contexts that have the object selected.
  std::atomic<int> selections = 0;
};

// The selected object of one kind in a device context.
template <class T, class Handle>
class Selection {
 public:
  Selection() = default;
  ~Selection() { Replace(nullptr, nullptr); }
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;

  // Returns the handle that was selected before.
  Handle Replace(Handle handle, std::shared_ptr<T> object) {
    if (object != nullptr) ++object->selections;
    if (object_ != nullptr) --object_->selections;
    object_ = std::move(object);
    return std::exchange(handle_, handle);
  }
  const std::shared_ptr<T>& Get() const { return object_; }

 private:
  Handle handle_ = nullptr;
  std::shared_ptr<T> object_;
};

}  // namespace platform
