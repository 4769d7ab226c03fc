// The umbrella header of the Win32 API, holding what the layer implements.
#pragma once

#include <winreg.h>

#include <winbase.h>
#include <windef.h>
#include <winerror.h>
#include <winnls.h>
#include <winuser.h>
