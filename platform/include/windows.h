// The umbrella header of the Win32 API, holding what the layer implements.
#pragma once

#include <winbase.h>
#include <windef.h>
#include <winerror.h>
#include <wingdi.h>
#include <winnls.h>

#include <winreg.h>

#include <winuser.h>
