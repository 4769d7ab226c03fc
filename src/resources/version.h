// The version of the program, shared by the resource script and the code.
#pragma once

#define QG_VERSION_MAJOR 1
#define QG_VERSION_MINOR 0
#define QG_VERSION_PATCH 0
#define QG_VERSION_TEXT "1.0.0"
