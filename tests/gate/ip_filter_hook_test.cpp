#include "gate/ip_filter_hook.h"

#include <gmock/gmock.h>

#include "gate/service_record.h"
#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class IpFilterHookTest : public testing::Test {
 protected:
  static void RegisterBoth() {
    Register(L"IpFilterDriver", L"Filter", L"System32\\Drivers\\IpFltDrv.sys");
    Register(L"QGIpHook", L"Hook", L"C:\\Old\\QGIpHook.sys");
  }

  platform::SimulatedMachine machine_;
  std::shared_ptr<platform::RecordingDevice> filter_ = machine_.AddIpFilterDriver();
  std::shared_ptr<platform::RecordingDevice> device_ = machine_.AddDriver(L"QGIpHook", L"QGIpHook");
  IpFilterHook hook_;
};

TEST_F(IpFilterHookTest, TheDriverIsNotifiedWhatIsLocalBeforeItBlocks) {
  ASSERT_TRUE(hook_.Start());
  EXPECT_TRUE(hook_.IsAvailable());
  EXPECT_EQ(hook_.Error(), NO_ERROR);
  EXPECT_TRUE(hook_.Pass());
  EXPECT_TRUE(hook_.Block(false));
  EXPECT_TRUE(hook_.Block(true));
  EXPECT_THAT(device_->Codes(),
              ElementsAre(0x939C2098u, 0x939C20A0u, 0x939C2094u, 0x939C209Cu, 0x939C2094u));
  EXPECT_THAT(filter_->Codes(), IsEmpty());
  device_->ClearCodes();
  device_->FailControlWith(ERROR_GEN_FAILURE);
  EXPECT_FALSE(hook_.Block(true));
  EXPECT_THAT(device_->Codes(), ElementsAre(0x939C209Cu, 0x939C2094u)) << "blocks all the same";
  EXPECT_FALSE(hook_.Pass());
  hook_.Stop();
}

TEST_F(IpFilterHookTest, TheFilterDriverKeepsItsRecordTheHookDriverIsTurnedToDemandStart) {
  RegisterBoth();
  ASSERT_TRUE(hook_.Start());
  hook_.Stop();
  EXPECT_EQ(Record(L"IpFilterDriver")->startType, SERVICE_SYSTEM_START);
  EXPECT_EQ(Record(L"IpFilterDriver")->displayName, L"Filter");
  EXPECT_EQ(Record(L"QGIpHook")->startType, SERVICE_DEMAND_START);
  EXPECT_EQ(Record(L"QGIpHook")->displayName, L"QGIpHook");
}

TEST_F(IpFilterHookTest, WhatIsInstalledIsUsedAsItIsAndNothingElseIsInstalled) {
  EXPECT_FALSE(hook_.StartInstalled());
  EXPECT_FALSE(Record(L"IpFilterDriver") || Record(L"QGIpHook"));
  RegisterBoth();
  EXPECT_TRUE(hook_.StartInstalled());
  hook_.Stop();
  EXPECT_EQ(Record(L"QGIpHook")->startType, SERVICE_SYSTEM_START);
  EXPECT_EQ(Record(L"QGIpHook")->file, L"C:\\Old\\QGIpHook.sys");
}

TEST_F(IpFilterHookTest, WithoutTheFilterDriverTheHookDriverIsNotTried) {
  filter_->FailOpenWith(ERROR_ACCESS_DENIED);
  EXPECT_FALSE(hook_.Start());
  EXPECT_FALSE(hook_.IsAvailable());
  EXPECT_EQ(hook_.Error(), ERROR_ACCESS_DENIED);
  EXPECT_FALSE(Record(L"QGIpHook"));
  EXPECT_FALSE(hook_.Pass());
  EXPECT_FALSE(hook_.Block(true));
  EXPECT_THAT(device_->Codes(), IsEmpty());
  hook_.Stop();
}

TEST_F(IpFilterHookTest, StoppingBringsBothDriversDownAndTheGateSaysWhyItIsNotThere) {
  device_->FailOpenWith(ERROR_FILE_NOT_FOUND);
  EXPECT_FALSE(hook_.Start());
  EXPECT_EQ(hook_.Error(), ERROR_FILE_NOT_FOUND);
  hook_.Stop();
  EXPECT_EQ(Record(L"IpFilterDriver")->state, SERVICE_STOPPED);
  device_->FailOpenWith(NO_ERROR);
  ASSERT_TRUE(hook_.Start());
  hook_.Stop();
  EXPECT_EQ(Record(L"IpFilterDriver")->state, SERVICE_STOPPED);
  EXPECT_EQ(Record(L"QGIpHook")->state, SERVICE_STOPPED);
  EXPECT_FALSE(hook_.IsAvailable());
  EXPECT_EQ(hook_.Error(), ERROR_SERVICE_NOT_ACTIVE);
  EXPECT_FALSE(hook_.Block(false));
  EXPECT_THAT(device_->Codes(), IsEmpty());
}

}  // namespace
}  // namespace quillgate
