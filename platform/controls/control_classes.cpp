#include "platform/controls/control_classes.h"

#include <commctrl.h>

#include <array>

#include "platform/controls/button_control.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/date_picker.h"
#include "platform/controls/edit_control.h"
#include "platform/controls/list_view.h"
#include "platform/controls/static_control.h"
#include "platform/controls/tab_control.h"
#include "platform/controls/tool_tip.h"
#include "platform/controls/up_down.h"
#include "platform/dialog/dialog_control.h"

namespace platform {
namespace {

template <class Kind>
std::unique_ptr<Control> Make(Window& window) {
  return std::make_unique<Kind>(window);
}

}  // namespace

std::span<const SystemClass> ControlClasses() {
  static constexpr std::array kClasses = {
      SystemClass{WC_STATIC, Make<StaticControl>},
      SystemClass{WC_BUTTON, Make<ButtonControl>},
      SystemClass{WC_EDIT, Make<EditControl>},
      SystemClass{WC_COMBOBOX, Make<ComboBox>},
      SystemClass{WC_TABCONTROL, Make<TabControl>},
      SystemClass{WC_LISTVIEW, Make<ListView>},
      SystemClass{UPDOWN_CLASS, Make<UpDown>},
      SystemClass{DATETIMEPICK_CLASS, Make<DatePicker>},
      SystemClass{TOOLTIPS_CLASSW, Make<ToolTip>},
      SystemClass{L"#32770", MakeDialogControl},
  };
  return kClasses;
}

}  // namespace platform
