// The account functions' umbrella header.
#pragma once

#include <lmaccess.h>
#include <lmapibuf.h>
#include <lmcons.h>
#include <windef.h>
