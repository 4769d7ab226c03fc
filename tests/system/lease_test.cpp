// The lease of an open gate on real packets, a short one.
#include <chrono>
#include <filesystem>
#include <thread>

#include "system/crossings.h"
#include "system/leaks.h"

namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

class Lease : public leaks::Leaks {};

TEST_F(Lease, LosesNothingWhileItIsRenewed) {
  leaks::Flood flood(*lab_);
  lab_->Forget();
  LeaseFor(3);
  flood.Begin(5ms);
  for (int renewal = 0; renewal < 40; ++renewal) {
    ASSERT_TRUE(driver_->OpenGate());
    std::this_thread::sleep_for(100ms);
  }
  flood.Stop();
  EXPECT_GT(flood.Sent(), 100);
  const auto sent = static_cast<std::size_t>(flood.Sent());
  for (int i = 0; i < 1000 && flood.Arrived() < sent; ++i)
    std::this_thread::sleep_for(1ms);
  EXPECT_EQ(flood.Arrived(), sent);
}

// Neither a program that was killed nor one that starts and does not get to a decision keeps it.
TEST_F(Lease, EndsForRunningTrafficTooUnlessItIsRenewedByADecision) {
  LeaseFor(60);
  ASSERT_TRUE(driver_->OpenGate());
  leaks::Crossings crossings(*lab_);
  EXPECT_THAT(crossings.Try(), leaks::kAllCross);
  LeaseFor(2);
  ASSERT_TRUE(driver_->OpenGate());
  driver_->Kill();
  LeaseFor(60);
  StartDriver();
  ASSERT_TRUE(driver_->OpenGate());
  std::this_thread::sleep_for(2100ms);
  EXPECT_THAT(crossings.Try(), leaks::kNoneCross);

  std::filesystem::remove(folder_.Path() / "closed_from_boot");
  ASSERT_TRUE(driver_->OpenGate());
  EXPECT_THAT(lab_->Host().Shell("nft list tables"), Not(HasSubstr("quillgate")));
  EXPECT_THAT(leaks::Crossings(*lab_).Try(), leaks::kAllCross);
}

}  // namespace
