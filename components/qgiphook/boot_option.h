// The option to have the gate closed from the start of the system on: a file in the folder where
// the service keeps its state. While it is on, an open gate is a lease. Any thread.
#pragma once

#include <chrono>
#include <filesystem>

namespace quillgate::gate {

class BootOption {
 public:
  // The file may hold a shorter lease than usual, in seconds.
  static constexpr const char* kFileName = "closed_from_boot";
  // Three enforcement cycles.
  static constexpr std::chrono::seconds kLease{60};

  explicit BootOption(const std::filesystem::path& folder) : file_(folder / kFileName) {}

  // How long an open gate stays open unless it is opened again; 0 while the option is off.
  std::chrono::seconds Lease() const;

  // Returns whether the option is as wanted now. The folder must exist.
  bool Switch(bool on) const;

 private:
  std::filesystem::path file_;
};

}  // namespace quillgate::gate
