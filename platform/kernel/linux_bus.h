// Ownership of sd-bus connections and messages, and what a failed call throws. A connection and its
// messages are for one thread at a time.
#pragma once

#include <systemd/sd-bus.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace platform {

struct BusCloser {
  void operator()(sd_bus* bus) const { ::sd_bus_close_unref(bus); }
};
using BusConnection = std::unique_ptr<sd_bus, BusCloser>;

struct BusMessageCloser {
  void operator()(sd_bus_message* message) const { ::sd_bus_message_unref(message); }
};
using BusMessage = std::unique_ptr<sd_bus_message, BusMessageCloser>;

class BusError : public std::runtime_error {
 public:
  // `name` is the name of the error reply, such as "org.freedesktop.DBus.Error.NoReply".
  BusError(const std::string& what, std::string name)
      : std::runtime_error(what + ": " + name), name_(std::move(name)) {}

  const std::string& Name() const { return name_; }

 private:
  std::string name_;
};

// The error reply of one call.
class BusFault {
 public:
  BusFault() = default;
  ~BusFault() { ::sd_bus_error_free(&error_); }
  BusFault(const BusFault&) = delete;
  BusFault& operator=(const BusFault&) = delete;

  sd_bus_error* Out() { return &error_; }
  // Without a name when no error reply has come.
  const sd_bus_error& Reply() const { return error_; }
  // Throws BusError when the call's result is negative; `what` names the call.
  void Check(int result, const char* what) const;

 private:
  sd_bus_error error_{};
};

// The same for a call that has no error reply.
void CheckBus(int result, const char* what);

// Whether the message is from the connection with that name. The bus delivers a signal that anybody
// sends to this connection alone, whatever sender was asked for, so receivers of signals compare.
bool IsFrom(sd_bus_message* message, std::string_view name);

}  // namespace platform
