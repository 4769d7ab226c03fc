// Every way across the host, and what gets through on it.
#pragma once

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "lab/conversation.h"
#include "lab/network_lab.h"

namespace leaks {

// TCP, UDP and ICMP over both IP versions: by the host itself and by the client behind it, out and
// in, in conversations that begin now and in ones that have been running.
class Crossings {
 public:
  // Starts the conversations that run from now on; throws std::runtime_error when two ends do not
  // hear of each other.
  explicit Crossings(lab::NetworkLab& machines);

  // One try each: the packets that got across, by the way they took.
  std::map<std::string, std::size_t> Try();

 private:
  struct Kind {
    std::string name;
    const lab::Addresses& ip;
    lab::Protocol protocol;
    lab::End host, client, server;
    lab::Conversation hostRuns{protocol, host, server};
    lab::Conversation clientRuns{protocol, client, server};
  };
  using Across = std::map<std::string, std::size_t>;
  using Sending = void (lab::Conversation::*)();

  void TryRunning(Kind& kind, Across& across);
  void TryNew(const Kind& kind, Across& across);
  // The packets of one sending that arrive at the Internet's or at the client's end.
  std::size_t Sent(lab::Conversation& talk, Sending send, const char* from, const char* to);

  lab::NetworkLab& lab_;
  std::vector<Kind> kinds_;
};

// What Try answers for an open gate, and for a closed one: for each of 6 kinds on 8 ways.
inline const auto kAllCross =
    testing::AllOf(testing::SizeIs(48), testing::Each(testing::Pair(testing::_, testing::Gt(0u))));
inline const auto kNoneCross =
    testing::AllOf(testing::SizeIs(48), testing::Each(testing::Pair(testing::_, 0u)));

// Datagrams from the host to the server, one after the other.
class Flood {
 public:
  // Has sent one and heard of the server; throws std::runtime_error when that fails.
  explicit Flood(lab::NetworkLab& machines);

  // Sends on any processor, until Stop.
  void Begin(std::chrono::microseconds pause);
  void Stop() { sender_ = {}; }

  long Sent() const { return sent_; }
  // How many have arrived since the lab forgot.
  std::size_t Arrived();

 private:
  lab::NetworkLab& lab_;
  lab::Conversation talk_;
  std::atomic<long> sent_{0};
  std::jthread sender_;
};

}  // namespace leaks
