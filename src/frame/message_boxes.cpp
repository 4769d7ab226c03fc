#include "frame/message_boxes.h"

#include "storage/db_error.h"

namespace quillgate {
namespace {

int Show(HWND owner, const MessageCatalogue& catalogue, const std::wstring& text, UINT style,
         MessageId caption = kMsgProductName) {
  return ::MessageBoxW(owner, text.c_str(), catalogue.GetMessageText(caption).c_str(), style);
}

std::wstring CurrentFailure(const MessageCatalogue& catalogue) {
  try {
    throw;
  } catch (const DBerror& error) {
    return catalogue.GetMessageText(kMsgDatabaseError) + L"\n\n" + error.Message();
  } catch (...) {
    return catalogue.GetMessageText(kMsgUnknownError);
  }
}

}  // namespace

void ShowText(HWND owner, const MessageCatalogue& catalogue, const std::wstring& text, UINT icon) {
  Show(owner, catalogue, text, MB_OK | icon);
}

void ShowError(HWND owner, const MessageCatalogue& catalogue, const std::wstring& text) {
  ShowText(owner, catalogue, text, MB_ICONERROR);
}

void ShowInformation(HWND owner, const MessageCatalogue& catalogue, const std::wstring& text) {
  ShowText(owner, catalogue, text, MB_ICONINFORMATION);
}

bool AskYesNo(HWND owner, const MessageCatalogue& catalogue, const std::wstring& question,
              MessageId caption) {
  return Show(owner, catalogue, question, MB_YESNO | MB_ICONQUESTION, caption) == IDYES;
}

void ShowCurrentException(HWND owner, const MessageCatalogue& catalogue) noexcept {
  try {
    ShowError(owner, catalogue, CurrentFailure(catalogue));
  } catch (...) {
    // Out of memory: no text can be composed, so nothing is shown.
  }
}

}  // namespace quillgate
