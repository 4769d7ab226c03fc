#include <tuple>

#include "platform/registry/registry_key.h"
#include "platform/service/layer/service_fixture.h"

namespace {

using ServiceConfig = ServiceFixture;

TEST_F(ServiceConfig, InvalidArgumentsMakeNoService) {
  const std::pair<Wanted, DWORD> cases[] = {
      {{.name = nullptr}, ERROR_INVALID_PARAMETER},
      {{.name = L""}, ERROR_INVALID_NAME},
      {{.name = L"a\\b"}, ERROR_INVALID_NAME},
      {{.name = L"../escape"}, ERROR_INVALID_NAME},
      {{.access = 0x80000000}, ERROR_ACCESS_DENIED},
      {{.type = 0x20}, ERROR_INVALID_PARAMETER},
      {{.type = 0}, ERROR_INVALID_PARAMETER},
      {{.type = SERVICE_KERNEL_DRIVER | SERVICE_INTERACTIVE_PROCESS}, ERROR_INVALID_PARAMETER},
      {{.startType = SERVICE_SYSTEM_START}, ERROR_INVALID_PARAMETER},
      {{.startType = 5}, ERROR_INVALID_PARAMETER},
      {{.errorControl = 4}, ERROR_INVALID_PARAMETER},
      {{.image = nullptr}, ERROR_INVALID_PARAMETER},
      {{.image = L""}, ERROR_INVALID_PARAMETER},
      {{.dependencies = L"other\0"}, ERROR_INVALID_PARAMETER},
      {{.account = L".\\somebody"}, ERROR_INVALID_SERVICE_ACCOUNT},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(CreateError(each.first), each.second) << (&each - cases);
    EXPECT_EQ(OpenError(L"sample"), ERROR_SERVICE_DOES_NOT_EXIST) << (&each - cases);
  }
}

TEST_F(ServiceConfig, NamesAreTakenInAnyCase) {
  ASSERT_EQ(CreateError({.name = L"Sample", .displayName = L"A sample"}), NO_ERROR);
  EXPECT_EQ(CreateError({.name = L"SAMPLE", .displayName = L"Another"}), ERROR_SERVICE_EXISTS);
  EXPECT_EQ(OpenError(L"sAMPLE"), NO_ERROR);
  EXPECT_EQ(CreateError({.name = L"other", .displayName = L"a SAMPLE"}),
            ERROR_DUPLICATE_SERVICE_NAME);
  EXPECT_EQ(CreateError({.name = L"other", .displayName = L"sample"}),
            ERROR_DUPLICATE_SERVICE_NAME);
}

TEST_F(ServiceConfig, TheRecordIsChangedValueByValueAndByNoInvalidChange) {
  const ScHandle service =
      Create({.type = SERVICE_WIN32_OWN_PROCESS | SERVICE_INTERACTIVE_PROCESS});
  ASSERT_EQ(Change(service, SERVICE_AUTO_START, nullptr, L"Renamed"), NO_ERROR);
  EXPECT_EQ(Change(service, 9, L"\\other"), ERROR_INVALID_PARAMETER);

  DWORD needed = 0;
  EXPECT_EQ(ErrorOf(::QueryServiceConfigW(service.get(), nullptr, 0, &needed)),
            ERROR_INSUFFICIENT_BUFFER);
  std::vector<std::byte> memory(needed);
  auto* const config = reinterpret_cast<LPQUERY_SERVICE_CONFIGW>(memory.data());
  ASSERT_TRUE(::QueryServiceConfigW(service.get(), config, needed, &needed));
  EXPECT_EQ(config->dwServiceType, 0x110u);
  EXPECT_EQ(config->dwStartType, SERVICE_AUTO_START);
  EXPECT_EQ(config->dwErrorControl, SERVICE_ERROR_NORMAL);
  EXPECT_STREQ(config->lpBinaryPathName, L"\\opt\\sample");
  EXPECT_STREQ(config->lpDisplayName, L"Renamed");
  EXPECT_STREQ(config->lpServiceStartName, L"LocalSystem");
  EXPECT_STREQ(config->lpLoadOrderGroup, L"");
  EXPECT_STREQ(config->lpDependencies, L"");
}

TEST_F(ServiceConfig, AHandleWithoutTheRightDoesNothing) {
  ASSERT_EQ(CreateError({}), NO_ERROR);
  SERVICE_STATUS status{};
  DWORD needed = 0;
  const ScHandle query = Open(L"sample", SERVICE_QUERY_STATUS);
  EXPECT_EQ(Start(query), ERROR_ACCESS_DENIED);
  EXPECT_EQ(ErrorOf(::DeleteService(query.get())), ERROR_ACCESS_DENIED);
  EXPECT_EQ(Stop(query), ERROR_ACCESS_DENIED);
  EXPECT_EQ(Control(query, 128), ERROR_ACCESS_DENIED);
  EXPECT_EQ(ErrorOf(::QueryServiceConfigW(query.get(), nullptr, 0, &needed)), ERROR_ACCESS_DENIED);
  const ScHandle start = Open(L"sample", SERVICE_START);
  EXPECT_EQ(ErrorOf(::QueryServiceStatus(start.get(), &status)), ERROR_ACCESS_DENIED);
  manager_.reset(::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
  EXPECT_EQ(CreateError({.name = L"x"}), ERROR_ACCESS_DENIED);
}

TEST_F(ServiceConfig, AForeignOrClosedHandleIsInvalid) {
  ASSERT_EQ(CreateError({}), NO_ERROR);
  SERVICE_STATUS status{};
  EXPECT_EQ(ErrorOf(::QueryServiceStatus(manager_.get(), &status)), ERROR_INVALID_HANDLE);
  const SC_HANDLE closed = Open(L"sample").get();
  EXPECT_EQ(ErrorOf(::QueryServiceStatus(closed, &status)), ERROR_INVALID_HANDLE);
  EXPECT_EQ(ErrorOf(::CloseServiceHandle(closed)), ERROR_INVALID_HANDLE);
  EXPECT_EQ(ErrorOf(::StartServiceW(nullptr, 0, nullptr)), ERROR_INVALID_HANDLE);
}

TEST_F(ServiceConfig, AnotherMachineOrDatabaseIsNotThere) {
  EXPECT_EQ(ErrorOf(::OpenSCManagerW(L"other", nullptr, 1)), RPC_S_SERVER_UNAVAILABLE);
  EXPECT_EQ(ErrorOf(::OpenSCManagerW(nullptr, L"ServicesFailed", 1)),
            ERROR_DATABASE_DOES_NOT_EXIST);
  EXPECT_EQ(ErrorOf(::OpenSCManagerW(nullptr, L"nonsense", 1)), ERROR_INVALID_NAME);
}

TEST_F(ServiceConfig, ADeletedServiceIsGoneAndItsHandleSaysSo) {
  const ScHandle service = Create({});
  ASSERT_TRUE(::DeleteService(service.get()));
  EXPECT_EQ(OpenError(L"sample"), ERROR_SERVICE_DOES_NOT_EXIST);
  EXPECT_EQ(ErrorOf(::DeleteService(service.get())), ERROR_SERVICE_MARKED_FOR_DELETE);
  EXPECT_EQ(Start(service), ERROR_SERVICE_MARKED_FOR_DELETE);
  EXPECT_EQ(StateOf(service), SERVICE_STOPPED);
  EXPECT_EQ(CreateError({}), NO_ERROR);
}

// A record that somebody has damaged counts as no service and can be replaced, not trusted.
TEST_F(ServiceConfig, ADamagedRecordIsNoService) {
  constexpr const wchar_t* kRecord = L"SYSTEM\\CurrentControlSet\\Services\\sample";
  const std::tuple<const wchar_t*, DWORD, std::string> damages[] = {
      {L"Type", REG_SZ, std::string(8, 'x')},
      {L"Type", REG_DWORD, std::string(1, '\1')},
      {L"Start", REG_BINARY, std::string(4, '\0')},
      {L"ImagePath", REG_DWORD, std::string(4, '\0')},
      {L"ErrorControl", REG_NONE, ""},
  };
  for (const auto& [value, type, data] : damages) {
    ASSERT_EQ(CreateError({}), NO_ERROR);
    ASSERT_EQ(Key(kRecord, KEY_WRITE).Set(value, type, data.data(), data.size()), 0);
    EXPECT_EQ(OpenError(L"sample"), ERROR_SERVICE_DOES_NOT_EXIST) << type;
    EXPECT_EQ(CreateError({}), NO_ERROR) << type;
    EXPECT_TRUE(::DeleteService(Open(L"sample").get()));
  }
}

}  // namespace
