// The control handler and what it sets off.
#include "service/service_module.h"

#include "service_test.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ServiceModuleTest : public ServiceTest {
 protected:
  static bool TakeQuit() {
    MSG message{};
    return ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE &&
           message.message == WM_QUIT;
  }
};

TEST_F(ServiceModuleTest, ControlsThatMeanNothingDoNothingAndUnknownOnesAreLogged) {
  for (const DWORD control : {2u, 3u, 4u, 5u})
    module_.HandleControl(control);
  EXPECT_THAT(machine_.EventTexts(), IsEmpty());
  for (const DWORD control : {6u, 127u, 130u, 255u})
    module_.HandleControl(control);
  EXPECT_EQ(machine_.EventTexts(), std::vector<std::wstring>(4, L"Bad service request"));
}

TEST_F(ServiceModuleTest, AStopEndsTheMainThreadsLoopAlsoOneThatComesBeforeTheThreadIsKnown) {
  module_.HandleControl(SERVICE_CONTROL_STOP);
  EXPECT_FALSE(TakeQuit());
  module_.SetMainThread();
  EXPECT_TRUE(TakeQuit());
  EXPECT_FALSE(TakeQuit());
  module_.HandleControl(SERVICE_CONTROL_STOP);
  EXPECT_TRUE(TakeQuit());
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
