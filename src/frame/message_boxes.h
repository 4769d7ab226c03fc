// The program's message boxes: all have its name as caption.
#pragma once

#include <windows.h>

#include <string>

#include "text/message_catalogue.h"

namespace quillgate {

// With the error icon; returns when it has been closed. The owner may be null.
void ShowError(HWND owner, const MessageCatalogue& catalogue, const std::wstring& text);
void ShowInformation(HWND owner, const MessageCatalogue& catalogue, const std::wstring& text);

// Within a handler: the exception that is being handled, as an error for people. What the database
// says is told as it stands.
void ShowCurrentException(HWND owner, const MessageCatalogue& catalogue) noexcept;

}  // namespace quillgate
