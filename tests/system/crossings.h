// Every way across the host, and what gets through on it.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "lab/conversation.h"
#include "lab/network_lab.h"

namespace leaks {

// The ways of one protocol: by the host itself and by the client behind it, out and in, in
// conversations that begin now and in ones that have been running.
class Crossings {
 public:
  Crossings(lab::NetworkLab& machines, const lab::Addresses& ip, lab::Protocol protocol);

  // Starts the conversations that run from now on; whether both ends hear of each other.
  bool Establish();

  // One try each: the packets that got across, by the way they took.
  std::map<std::string, std::size_t> Try();

 private:
  using Across = std::map<std::string, std::size_t>;
  using Sending = void (lab::Conversation::*)();

  lab::End Host() const { return {&lab_.Host(), ip_.hostOutside}; }
  lab::End Client() const { return {&lab_.Client(), ip_.client}; }
  lab::End Server() const { return {&lab_.Internet(), ip_.server}; }
  void TryRunning(Across& across);
  void TryNew(Across& across);
  std::size_t Sent(lab::Conversation& conversation, Sending send, const lab::PacketCapture& capture,
                   const char* from, const char* to);

  lab::NetworkLab& lab_;
  const lab::Addresses& ip_;
  lab::Protocol protocol_;
  lab::Conversation hostRuns_;
  lab::Conversation clientRuns_;
};

}  // namespace leaks
