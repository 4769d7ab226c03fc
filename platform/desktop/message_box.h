// A message box on the screen. Lives on the window thread.
#pragma once

#include <QMessageBox>

#include "platform/user/desktop_module.h"

namespace platform {

class QtMessageBox final : public ShownMessageBox {
 public:
  QtMessageBox(const MessageBoxRequest& request, EventLoop& loop);

  std::optional<int> Answer() const override { return answer_; }

 private:
  QMessageBox box_;
  std::optional<int> answer_;
};

}  // namespace platform
