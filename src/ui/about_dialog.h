// The About box: name and version of the program. Modal; created and run on the service main
// thread.
#pragma once

#include "frame/dialog_object.h"

namespace quillgate {

class AboutDialog final : public DialogObject {
 public:
  explicit AboutDialog(const UiSurroundings& ui);

  // Shows the box and returns when it has been closed.
  void Run();

 private:
  bool OnCommand(int control, int code) override;
  void SetTexts(HWND window) override;
};

}  // namespace quillgate
