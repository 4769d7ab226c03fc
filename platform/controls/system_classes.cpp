#include <array>

#include "platform/controls/button_control.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/date_picker.h"
#include "platform/controls/edit_control.h"
#include "platform/controls/list_view.h"
#include "platform/controls/static_control.h"
#include "platform/controls/tab_control.h"
#include "platform/controls/up_down.h"
#include "platform/dialog/dialog_control.h"
#include "platform/user/control.h"

namespace platform {
namespace {

template <class Kind>
std::unique_ptr<Control> Make(Window& window) {
  return std::make_unique<Kind>(window);
}

}  // namespace

std::span<const SystemClass> SystemClasses() {
  static constexpr std::array kClasses = {
      SystemClass{L"Static", Make<StaticControl>},
      SystemClass{L"Button", Make<ButtonControl>},
      SystemClass{L"Edit", Make<EditControl>},
      SystemClass{L"ComboBox", Make<ComboBox>},
      SystemClass{L"SysTabControl32", Make<TabControl>},
      SystemClass{L"SysListView32", Make<ListView>},
      SystemClass{L"msctls_updown32", Make<UpDown>},
      SystemClass{L"SysDateTimePick32", Make<DatePicker>},
      SystemClass{L"#32770", MakeDialogControl},
  };
  return kClasses;
}

}  // namespace platform
