// A sheet of property pages, shown modally on the service main thread. The pages are borrowed: they
// outlive Run.
#pragma once

#include <string>
#include <vector>

#include "frame/property_page.h"

namespace quillgate {

class PropertySheet {
 public:
  enum class Apply { kWithButton, kWithoutButton };

  explicit PropertySheet(Apply apply) : apply_(apply) {}

  // Pages stand in the order in which they were added.
  void Add(PropertyPage& page) { pages_.push_back(&page); }

  // Shows the sheet and returns when it has been closed, however that was. False when there is no
  // page, the sheet could not be shown or the program is to stop.
  bool Run(const std::wstring& caption);

 private:
  Apply apply_;
  std::vector<PropertyPage*> pages_;
};

}  // namespace quillgate
