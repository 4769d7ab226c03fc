// Somebody on the host who sends to the server all the time, thousands of datagrams a second, from
// a thread of his own on whatever processor is free.
#pragma once

#include <sched.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

#include "lab/conversation.h"
#include "lab/network_lab.h"

namespace leaks {

class SteadySender {
 public:
  // The gate is open when it begins: both ends hear of each other once.
  explicit SteadySender(lab::NetworkLab& machines)
      : flood_(lab::Protocol::kUdp, AF_INET, {&machines.Host(), lab::kIp4.hostOutside},
               {&machines.Internet(), lab::kIp4.server}) {
    if (!flood_.Establish()) throw std::runtime_error("the server is not reached");
    thread_ = std::thread([this] { Send(); });
  }
  ~SteadySender() {
    stop_ = true;
    thread_.join();
  }
  SteadySender(const SteadySender&) = delete;
  SteadySender& operator=(const SteadySender&) = delete;

  long Sent() const { return sent_; }

 private:
  void Send() {
    cpu_set_t all;
    CPU_ZERO(&all);
    for (std::size_t processor = 0; processor < 64; ++processor)
      CPU_SET(processor, &all);
    ::sched_setaffinity(0, sizeof all, &all);
    for (; !stop_; ++sent_) {
      flood_.SendForth();
      std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
  }

  lab::Conversation flood_;
  std::atomic<bool> stop_{false};
  std::atomic<long> sent_{0};
  std::thread thread_;
};

}  // namespace leaks
