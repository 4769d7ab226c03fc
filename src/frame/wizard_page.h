// Base of the pages of a wizard: a property page that says where Back and Next lead, and looks at
// what was entered before it is left. Made and used on the thread that runs the wizard.
#pragma once

#include <optional>

#include "frame/property_page.h"

namespace quillgate {

class WizardPage : public PropertyPage {
 protected:
  // The band above an interior page.
  struct Header {
    MessageId title;
    MessageId subtitle;
  };

  // The title is that of the wizard's window. Without a header it is an exterior page, which shows
  // the watermark instead.
  WizardPage(const UiSurroundings& ui, UINT templateNumber, MessageId title,
             std::optional<Header> header, std::wstring helpTopic);

  // What can be pressed while the page is shown: PSWIZB_BACK, PSWIZB_NEXT, PSWIZB_FINISH.
  virtual DWORD Buttons() const;
  // The template number of the page to go to; nothing keeps the page. One that throws keeps it too.
  virtual std::optional<UINT> OnBack();
  virtual std::optional<UINT> OnNext();
  // Whether the wizard may end. One that throws keeps it open.
  virtual bool OnFinish();
  // The page is shown from now on, the first time or again.
  virtual void OnSetActive();

 private:
  using Way = std::optional<UINT> (WizardPage::*)();

  void Complete(PROPSHEETPAGEW& page) final;
  bool AnswerNotification(const NMHDR& header) final;
  LRESULT Target(Way way) noexcept;
  bool Finishes() noexcept;

  std::optional<Header> header_;
  // As the page's record borrows them.
  std::wstring headerTitle_;
  std::wstring headerSubtitle_;
};

}  // namespace quillgate
