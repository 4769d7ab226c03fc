// A thread with a window of the class "Recording" and a message loop, for tests of several threads.
#pragma once

#include <windows.h>

#include <future>
#include <thread>

#include "platform/kit/recording_window.h"

class WindowThread {
 public:
  WindowThread() {
    std::promise<HWND> created;
    thread_ = std::thread([&created, this] {
      id_ = ::GetCurrentThreadId();
      created.set_value(Recording::Create());
      MSG message;
      while (::GetMessageW(&message, nullptr, 0, 0) > 0)
        ::DispatchMessageW(&message);
    });
    window_ = created.get_future().get();
  }
  ~WindowThread() {
    if (thread_.joinable()) Stop(0);
  }
  WindowThread(const WindowThread&) = delete;
  WindowThread& operator=(const WindowThread&) = delete;

  // Ends the loop, and with it the thread.
  void Stop(WPARAM exitCode) {
    ::PostThreadMessageW(id_, WM_QUIT, exitCode, 0);
    thread_.join();
  }

  HWND Window() const { return window_; }
  DWORD Id() const { return id_; }

 private:
  std::thread thread_;
  HWND window_ = nullptr;
  DWORD id_ = 0;
};
