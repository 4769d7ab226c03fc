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

TEST_F(RateHistoryTest, TheRateIsTheAverageOfEightSecondsInWholeKilobytes) {
  const struct {
    int seconds;
    std::uint64_t receivedPerSecond, sentPerSecond, download, upload;
  } cases[] = {
      {4, 10 * kKilobyte, kKilobyte, 5, 0},
      {4, 10 * kKilobyte, kKilobyte, 10, 1},
      {8, 0, 3 * kKilobyte, 0, 3},
      {8, kKilobyte - 1, 2 * kKilobyte + 1, 0, 2},
  };
  for (const auto& each : cases) {
    Run(each.seconds, each.receivedPerSecond, each.sentPerSecond);
    EXPECT_EQ(rates_.DownloadRate(), each.download) << each.receivedPerSecond;
    EXPECT_EQ(rates_.UploadRate(), each.upload) << each.sentPerSecond;
  }
  // A new session leaves nothing of the old one.
  rates_.Restart();
  reading_ = {true, 0, 0, 0};
  Run(1, 8 * kKilobyte, 16 * kKilobyte);
  EXPECT_EQ(rates_.DownloadRate(), 1u);
  EXPECT_EQ(rates_.UploadRate(), 2u);
}

TEST_F(RateHistoryTest, ASmallerDurationOrDownloadIsANewSession) {
  Run(3, 100, 100);
  EXPECT_FALSE(rates_.IsOfNewSession(reading_));
  EXPECT_FALSE(rates_.IsOfNewSession({true, 3, 300, 0}));
  EXPECT_TRUE(rates_.IsOfNewSession({true, 2, 300, 300}));
  EXPECT_TRUE(rates_.IsOfNewSession({true, 3, 299, 300}));
}

}  // namespace
}  // namespace quillgate
