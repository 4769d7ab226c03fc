// Text for other programs to paste. Used on the service main thread.
#pragma once

#include <windows.h>

#include <string>

namespace quillgate {

// Puts the text on the clipboard, in place of what it holds; lines end in "\r\n". The owner is a
// window of the calling thread. False when another program has the clipboard open, or there is no
// desktop or no memory.
bool CopyToClipboard(HWND owner, const std::wstring& text);

}  // namespace quillgate
