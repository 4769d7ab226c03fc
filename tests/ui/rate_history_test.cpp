// Which rates eight seconds of readings make.
#include "ui/rate_history.h"

#include <gtest/gtest.h>

namespace quillgate {
namespace {

constexpr std::uint64_t kKilobyte = 1024;

// One reading a second of a session that receives and sends at even rates.
class RateHistoryTest : public testing::Test {
 protected:
  void Run(int seconds, std::uint64_t receivedPerSecond, std::uint64_t sentPerSecond) {
    for (int i = 0; i < seconds; ++i) {
      ++reading_.seconds;
      reading_.bytesReceived += receivedPerSecond;
      reading_.bytesSent += sentPerSecond;
      rates_.Add(reading_);
    }
  }

  SessionReading reading_{true, 0, 0, 0};
  RateHistory rates_;
};

TEST_F(RateHistoryTest, TheRateIsTheAverageOfEightSeconds) {
  Run(4, 10 * kKilobyte, kKilobyte);
  EXPECT_EQ(rates_.DownloadRate(), 5u);
  Run(4, 10 * kKilobyte, kKilobyte);
  EXPECT_EQ(rates_.DownloadRate(), 10u);
  EXPECT_EQ(rates_.UploadRate(), 1u);
  Run(8, 0, 3 * kKilobyte);
  EXPECT_EQ(rates_.DownloadRate(), 0u);
  EXPECT_EQ(rates_.UploadRate(), 3u);
}

TEST_F(RateHistoryTest, PartsOfAKilobyteAreDropped) {
  Run(8, kKilobyte - 1, 2 * kKilobyte + 1);
  EXPECT_EQ(rates_.DownloadRate(), 0u);
  EXPECT_EQ(rates_.UploadRate(), 2u);
}

TEST_F(RateHistoryTest, ASmallerDurationOrDownloadIsANewSession) {
  Run(3, 100, 100);
  EXPECT_FALSE(rates_.IsOfNewSession(reading_));
  EXPECT_FALSE(rates_.IsOfNewSession({true, 3, 300, 0}));
  EXPECT_TRUE(rates_.IsOfNewSession({true, 2, 300, 300}));
  EXPECT_TRUE(rates_.IsOfNewSession({true, 3, 299, 300}));
}

TEST_F(RateHistoryTest, ANewSessionLeavesNothingOfTheOldOne) {
  Run(8, 100 * kKilobyte, 50 * kKilobyte);
  rates_.Restart();
  reading_ = {true, 0, 0, 0};
  Run(1, 8 * kKilobyte, 16 * kKilobyte);
  EXPECT_EQ(rates_.DownloadRate(), 1u);
  EXPECT_EQ(rates_.UploadRate(), 2u);
}

TEST_F(RateHistoryTest, TrafficInOneDirectionAloneKeepsTheSeconds) {
  Run(8, 0, 8 * kKilobyte);
  EXPECT_EQ(rates_.UploadRate(), 8u);
}

}  // namespace
}  // namespace quillgate
