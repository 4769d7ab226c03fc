// Windows and all that belongs to them, one file per subject.
#pragma once

#include <user/caret.h>
#include <user/clipboard.h>
#include <user/control.h>
#include <user/cursor.h>
#include <user/dialog.h>
#include <user/draw.h>
#include <user/image.h>
#include <user/keyboard.h>
#include <user/menu.h>
#include <user/message.h>
#include <user/message_box.h>
#include <user/mouse.h>
#include <user/paint.h>
#include <user/scroll.h>
#include <user/window.h>
#include <windef.h>
#include <winerror.h>
