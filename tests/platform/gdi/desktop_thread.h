// Runs tests with and without a desktop in one process. Qt's offscreen platform, unless
// QT_QPA_PLATFORM names another one, is joined by a thread of its own and left with it.
#pragma once

#include <windows.h>

#include <functional>

// On a thread that has a window on the desktop; returns when the work is done.
void OnDesktop(const std::function<void()>& work);

// On a machine whose environment names no desktop.
void WithoutDesktop(const std::function<void()>& work);
