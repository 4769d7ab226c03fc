#include "boot_option.h"

#include <fstream>
#include <system_error>

namespace quillgate::gate {

// A file that cannot be read switches the option on, too.
std::chrono::seconds BootOption::Lease() const {
  std::error_code error;
  if (!std::filesystem::exists(file_, error) && !error) return {};
  int seconds = 0;
  std::ifstream(file_) >> seconds;
  const std::chrono::seconds lease(seconds);
  return lease.count() > 0 && lease < kLease ? lease : kLease;
}

bool BootOption::Switch(bool on) const {
  if (on) {
    std::ofstream file(file_);
    file << kLease.count() << std::endl;
    return file.good();
  }
  std::error_code error;
  std::filesystem::remove(file_, error);
  return !error;
}

}  // namespace quillgate::gate
