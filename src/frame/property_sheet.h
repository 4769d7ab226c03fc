// A sheet of property pages, shown modally on the service main thread. The pages are borrowed: they
// outlive Run.
#pragma once

#include <vector>

#include "frame/property_page.h"

namespace quillgate {

class PropertySheet {
 public:
  enum class Apply { kWithButton, kWithoutButton };

  PropertySheet(const MessageCatalogue& catalogue, MessageId caption, Apply apply)
      : catalogue_(catalogue), caption_(caption), apply_(apply) {}

  // Pages stand in the order in which they were added.
  void Add(PropertyPage& page) { pages_.push_back(&page); }

  // Shows the sheet and returns when it has been closed, however that was. False when there is no
  // page or the sheet could not be shown.
  bool Run();

 private:
  friend class PropertyPage;

  bool Show(std::vector<HPROPSHEETPAGE> handles) const;
  // Of the sheet itself: its caption and its tabs.
  void RefreshTexts(HWND sheet) const;

  const MessageCatalogue& catalogue_;
  MessageId caption_;
  Apply apply_;
  std::vector<PropertyPage*> pages_;
};

}  // namespace quillgate
