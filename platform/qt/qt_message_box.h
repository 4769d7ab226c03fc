// A message box on the screen. Lives on the window thread.
#pragma once

#include <QMessageBox>
#include <QPointer>

#include "platform/dialog/message_box.h"
#include "platform/user/event_loop.h"

namespace platform {

class QtMessageBox final : public ShownMessageBox {
 public:
  QtMessageBox(const MessageBoxView& view, EventLoop& loop);
  ~QtMessageBox() override;

  std::optional<int> Answer() const override { return answer_; }

 private:
  void AddButtons(const MessageBoxView& view);

  // Null when the box's owner, and with it the box, has been destroyed.
  QPointer<QMessageBox> box_;
  std::optional<int> answer_;
};

}  // namespace platform
