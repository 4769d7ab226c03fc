// Where the lines for the administrator go, and what they say.
#include "service/event_log.h"

#include "service_test.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

class EventLogTest : public testing::Test {
 protected:
  platform::SimulatedMachine machine_;
  EventLog events_;
};

TEST_F(EventLogTest, LinesAreInformationOfTheServiceOrPrintedAndSignsStandForThemselves) {
  events_.SetRunningAsService(true);
  events_.LogEvent(L"%s%n%ls 100%");
  events_.LogEvent(std::wstring(1000, L'x'));
  EXPECT_THAT(machine_.EventTexts(), ElementsAre(L"%s%n%ls 100%", std::wstring(255, L'x')));
  const platform::LoggedEvent event = machine_.Events().front();
  EXPECT_EQ(event.source, L"qgserv");
  EXPECT_EQ(event.type, EVENTLOG_INFORMATION_TYPE);
  EXPECT_EQ(event.id, 0u);

  events_.SetRunningAsService(false);
  testing::internal::CaptureStdout();
  events_.LogEvent(L"%s%n%ls 100%");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "%s%n%ls 100%\n");
}

TEST_F(EventLogTest, AnExceptionIsNotifiedByItsText) {
  events_.SetRunningAsService(true);
  const auto logThrown = [this](const auto& exception) {
    try {
      throw exception;
    } catch (...) {
      events_.LogCurrentException();
    }
  };
  logThrown(DBerror(L"no such table", 1));
  logThrown(std::runtime_error("Could not create thread."));
  logThrown(7);
  EXPECT_THAT(machine_.EventTexts(), ElementsAre(L"Database error: no such table",
                                                 L"Could not create thread.", L"Unknown failure"));
}

}  // namespace
}  // namespace quillgate
