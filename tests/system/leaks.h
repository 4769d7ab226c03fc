// The ground that the tests of the closed gate stand on: three machines, and a process that works
// the gate of the one in the middle.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lab/database_folder.h"
#include "lab/hook_driver.h"
#include "lab/network_lab.h"
#include "lab/raw_packet.h"

namespace leaks {

// One lab for all tests of a suite; each has a driver process of its own and starts with an open
// gate.
class Leaks : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    whyNot_ = lab::NetworkNamespace::WhyNot();
    if (whyNot_.empty() && lab_ == nullptr) lab_ = std::make_unique<lab::NetworkLab>();
  }
  static void TearDownTestSuite() { lab_.reset(); }

  void SetUp() override {
    if (!whyNot_.empty()) GTEST_SKIP() << whyNot_;
    // As on most machines, connections are tracked: a running one is known as established.
    lab_->Host().Shell(
        "nft 'add table inet tracking; add chain inet tracking seen"
        " { type filter hook prerouting priority 0; };"
        "add rule inet tracking seen ct state established counter'");
    StartDriver();
    ASSERT_TRUE(driver_->OpenGate());
  }
  void TearDown() override {
    if (driver_ == nullptr) return;
    driver_.reset();
    lab_->Host().Shell("nft flush ruleset");
  }

  void StartDriver() {
    driver_ = std::make_unique<lab::DriverProcess>(lab_->Host(), folder_.Path().string());
  }
  // From now on an open gate is a lease of so many seconds.
  void LeaseFor(int seconds) {
    lab::WriteFile(folder_.Path() / "closed_from_boot", std::to_string(seconds));
  }

  // How many packets like `seen` arrive when that one is sent.
  static std::size_t Arrivals(const lab::NetworkNamespace& from, const char* interfaceName,
                              const lab::RawPacket& sent, const lab::PacketCapture& at,
                              const lab::Packet& seen) {
    lab_->Forget();
    lab::SendRaw(from, interfaceName, sent);
    lab_->Settle();
    return at.Count(seen);
  }

  inline static std::unique_ptr<lab::NetworkLab> lab_;
  inline static std::string whyNot_;
  lab::DatabaseFolder folder_;  // the driver's root folder
  std::unique_ptr<lab::DriverProcess> driver_;
};

}  // namespace leaks
