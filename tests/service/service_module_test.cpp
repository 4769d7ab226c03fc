// The control handler and what it sets off.
#include "service/service_module.h"

#include "service_test.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using ServiceModuleTest = ServiceTest;

TEST_F(ServiceModuleTest, ControlsThatMeanNothingDoNothingAndUnknownOnesAreLogged) {
  for (const DWORD control : {2u, 3u, 4u, 5u})
    module_.HandleControl(control);
  EXPECT_THAT(machine_.EventTexts(), IsEmpty());
  for (const DWORD control : {6u, 127u, 130u, 255u})
    module_.HandleControl(control);
  EXPECT_EQ(machine_.EventTexts(), std::vector<std::wstring>(4, L"Bad service request"));
}

TEST_F(ServiceModuleTest, AStopEndsTheMainThreadsLoopAlsoOneThatComesBeforeTheThreadIsKnown) {
  const auto takeQuit = [] {
    MSG message{};
    return ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) && message.message == WM_QUIT;
  };
  module_.HandleControl(SERVICE_CONTROL_STOP);
  EXPECT_FALSE(takeQuit());
  module_.SetMainThread();
  EXPECT_TRUE(takeQuit());
  EXPECT_FALSE(takeQuit());
  module_.HandleControl(SERVICE_CONTROL_STOP);
  EXPECT_TRUE(takeQuit());
  EXPECT_THAT(machine_.EventTexts(), ElementsAre(L"Request to stop...", L"Request to stop..."));
}

TEST_F(ServiceModuleTest, ALogonThatFailsIsLoggedAndGoesNoFurther) {
  Set(SettingKey::kLogonSystem, L"WINDOWS");
  objects_.LoadUsers();
  module_.HandleControl(kControlWindowsLogon);
  EXPECT_THAT(machine_.EventTexts(), ElementsAre(L"Database error: no such table: WlNpData"));
}

TEST_F(ServiceModuleTest, WithoutAHandlerTheServiceDoesNotBegin) {
  // The manager has not started this process, so it takes no handler from it.
  module_.Initialise(kServiceName, kServiceDisplayName);
  module_.RunServiceMain();
  EXPECT_THAT(machine_.EventTexts(), ElementsAre(L"Handler not installed"));
  EXPECT_THAT(hook_->Codes(), IsEmpty());
}

}  // namespace
}  // namespace quillgate
