#include "gate/ip_filter_hook.h"

#include <gmock/gmock.h>

#include "gate_test.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class IpFilterHookTest : public GateTest {
 protected:
  std::shared_ptr<platform::RecordingDevice> AddHookDriver() {
    return machine_.AddDriver(L"QGIpHook", L"QGIpHook");
  }

  IpFilterHook hook_;
};

TEST_F(IpFilterHookTest, TheDriverIsToldWhatIsLocalBeforeItBlocks) {
  const auto filter = machine_.AddIpFilterDriver();
  const auto device = AddHookDriver();
  ASSERT_TRUE(hook_.Start());
  EXPECT_TRUE(hook_.IsAvailable());
  EXPECT_EQ(hook_.Error(), NO_ERROR);
  EXPECT_THAT(device->Codes(), IsEmpty());
  EXPECT_TRUE(hook_.Pass());
  EXPECT_THAT(device->Codes(), ElementsAre(0x939C2098u));
  device->ClearCodes();
  EXPECT_TRUE(hook_.Block(false));
  EXPECT_THAT(device->Codes(), ElementsAre(0x939C20A0u, 0x939C2094u));
  device->ClearCodes();
  EXPECT_TRUE(hook_.Block(true));
  EXPECT_THAT(device->Codes(), ElementsAre(0x939C209Cu, 0x939C2094u));
  EXPECT_THAT(filter->Codes(), IsEmpty());
  hook_.Stop();
}

TEST_F(IpFilterHookTest, TheFilterDriverKeepsItsRecordTheHookDriverIsTurnedToDemandStart) {
  machine_.AddIpFilterDriver();
  AddHookDriver();
  Register(L"IpFilterDriver", L"Filter", SERVICE_SYSTEM_START, L"System32\\Drivers\\IpFltDrv.sys");
  Register(L"QGIpHook", L"Hook", SERVICE_SYSTEM_START, L"System32\\Drivers\\QGIpHook.sys");
  ASSERT_TRUE(hook_.Start());
  hook_.Stop();
  EXPECT_EQ(Record(L"IpFilterDriver")->startType, SERVICE_SYSTEM_START);
  EXPECT_EQ(Record(L"IpFilterDriver")->displayName, L"Filter");
  EXPECT_EQ(Record(L"QGIpHook")->startType, SERVICE_DEMAND_START);
  EXPECT_EQ(Record(L"QGIpHook")->displayName, L"QGIpHook");
}

TEST_F(IpFilterHookTest, WhatIsInstalledIsUsedAsItIsAndNothingElseIsInstalled) {
  machine_.AddIpFilterDriver();
  AddHookDriver();
  EXPECT_FALSE(hook_.StartInstalled());
  EXPECT_FALSE(Record(L"IpFilterDriver") || Record(L"QGIpHook"));
  Register(L"IpFilterDriver", L"Filter", SERVICE_SYSTEM_START, L"System32\\Drivers\\IpFltDrv.sys");
  Register(L"QGIpHook", L"Hook", SERVICE_SYSTEM_START, L"C:\\Old\\QGIpHook.sys");
  EXPECT_TRUE(hook_.StartInstalled());
  hook_.Stop();
  EXPECT_EQ(Record(L"QGIpHook")->startType, SERVICE_SYSTEM_START);
  EXPECT_EQ(Record(L"QGIpHook")->file, L"C:\\Old\\QGIpHook.sys");
}

TEST_F(IpFilterHookTest, WithoutTheFilterDriverTheHookDriverIsNotTried) {
  machine_.AddIpFilterDriver()->FailOpenWith(ERROR_ACCESS_DENIED);
  const auto device = AddHookDriver();
  EXPECT_FALSE(hook_.Start());
  EXPECT_FALSE(hook_.IsAvailable());
  EXPECT_EQ(hook_.Error(), ERROR_ACCESS_DENIED);
  EXPECT_FALSE(Record(L"QGIpHook"));
  EXPECT_FALSE(hook_.Pass());
  EXPECT_FALSE(hook_.Block(true));
  EXPECT_THAT(device->Codes(), IsEmpty());
  hook_.Stop();
}

TEST_F(IpFilterHookTest, WithoutTheHookDriverTheGateSaysWhy) {
  machine_.AddIpFilterDriver();
  EXPECT_FALSE(hook_.Start());
  EXPECT_EQ(hook_.Error(), ERROR_FILE_NOT_FOUND);
  hook_.Stop();
  EXPECT_EQ(Record(L"IpFilterDriver")->state, SERVICE_STOPPED);
}

TEST_F(IpFilterHookTest, ARejectedCodeIsToldAndTheBlockIsSentAllTheSame) {
  machine_.AddIpFilterDriver();
  const auto device = AddHookDriver();
  ASSERT_TRUE(hook_.Start());
  device->FailControlWith(ERROR_GEN_FAILURE);
  EXPECT_FALSE(hook_.Block(true));
  EXPECT_THAT(device->Codes(), ElementsAre(0x939C209Cu, 0x939C2094u));
  EXPECT_FALSE(hook_.Pass());
  hook_.Stop();
}

TEST_F(IpFilterHookTest, StoppingBringsBothDriversDown) {
  machine_.AddIpFilterDriver();
  const auto device = AddHookDriver();
  ASSERT_TRUE(hook_.Start());
  hook_.Stop();
  EXPECT_EQ(Record(L"IpFilterDriver")->state, SERVICE_STOPPED);
  EXPECT_EQ(Record(L"QGIpHook")->state, SERVICE_STOPPED);
  EXPECT_FALSE(hook_.IsAvailable());
  EXPECT_NE(hook_.Error(), NO_ERROR);
  EXPECT_FALSE(hook_.Block(false));
  EXPECT_THAT(device->Codes(), IsEmpty());
}

}  // namespace
}  // namespace quillgate
