// A property sheet, shown modally on the service main thread. The pages are borrowed: they must
// outlive Run.
#pragma once

#include <optional>
#include <vector>

#include "frame/property_page.h"

namespace quillgate {

class PropertySheet {
 public:
  enum class Apply { kWithButton, kWithoutButton };

  PropertySheet(const MessageCatalogue& catalogue, MessageId caption, Apply apply)
      : catalogue_(catalogue), caption_(caption), apply_(apply) {}

  // Numbers of bitmap resources: the watermark of the exterior pages, and the header bitmap of the
  // interior ones.
  struct WizardBitmaps {
    WORD watermark;
    WORD header;
  };
  // Constructs a wizard. All its pages are WizardPage objects.
  PropertySheet(const MessageCatalogue& catalogue, MessageId caption, WizardBitmaps bitmaps)
      : catalogue_(catalogue), caption_(caption), wizard_(bitmaps) {}

  // The pages are shown in the order in which they were added.
  void Add(PropertyPage& page) { pages_.push_back(&page); }

  // Shows the sheet and returns when it has been closed by any button. False when there is no page,
  // the sheet could not be shown or the program is to stop.
  bool Run();

 private:
  friend class PropertyPage;

  bool Show(std::vector<HPROPSHEETPAGE> handles) const;
  void MakeWizard(PROPSHEETHEADERW& header) const;
  // Sets the caption of the sheet and the titles of its tabs.
  void RefreshTexts(HWND sheet) const;
  void Activate(const PropertyPage& page, HWND sheet) const;

  const MessageCatalogue& catalogue_;
  MessageId caption_;
  Apply apply_ = Apply::kWithoutButton;
  std::optional<WizardBitmaps> wizard_;
  std::vector<PropertyPage*> pages_;
};

}  // namespace quillgate
