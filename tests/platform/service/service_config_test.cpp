#include <winreg.h>

#include "platform/service/service_fixture.h"

namespace {

class ServiceConfig : public ServiceFixture {
 protected:
  struct Wanted {
    const wchar_t* name = L"sample";
    const wchar_t* displayName = L"A sample";
    DWORD access = SERVICE_ALL_ACCESS;
    DWORD type = SERVICE_WIN32_OWN_PROCESS;
    DWORD startType = SERVICE_DEMAND_START;
    DWORD errorControl = SERVICE_ERROR_NORMAL;
    const wchar_t* image = L"\\opt\\sample";
    const wchar_t* dependencies = nullptr;
    const wchar_t* account = nullptr;
  };

  DWORD Create(const Wanted& wanted) {
    const ScHandle service(::CreateServiceW(manager_.Get(), wanted.name, wanted.displayName,
                                            wanted.access, wanted.type, wanted.startType,
                                            wanted.errorControl, wanted.image, nullptr, nullptr,
                                            wanted.dependencies, wanted.account, nullptr));
    return service.Get() == nullptr ? ::GetLastError() : NO_ERROR;
  }

  static std::vector<std::byte> Query(const ScHandle& service) {
    DWORD needed = 0;
    EXPECT_FALSE(::QueryServiceConfigW(service.Get(), nullptr, 0, &needed));
    EXPECT_EQ(::GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    std::vector<std::byte> buffer(needed);
    EXPECT_TRUE(::QueryServiceConfigW(service.Get(), ConfigIn(buffer), needed, &needed));
    return buffer;
  }

  static LPQUERY_SERVICE_CONFIGW ConfigIn(std::vector<std::byte>& buffer) {
    return reinterpret_cast<LPQUERY_SERVICE_CONFIGW>(buffer.data());
  }
};

TEST_F(ServiceConfig, ArgumentsThatNoServiceCanHaveAreRefusedByTheirDocumentedErrors) {
  const struct {
    Wanted wanted;
    DWORD error;
  } cases[] = {
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
    EXPECT_EQ(Create(each.wanted), each.error) << (&each - cases);
    EXPECT_EQ(OpenError(L"sample"), ERROR_SERVICE_DOES_NOT_EXIST) << (&each - cases);
  }
}

TEST_F(ServiceConfig, ANameInAnotherCaseIsTheSameService) {
  ASSERT_EQ(Create({.name = L"Sample"}), NO_ERROR);
  EXPECT_EQ(Create({.name = L"SAMPLE", .displayName = L"Another"}), ERROR_SERVICE_EXISTS);
  EXPECT_EQ(OpenError(L"sAMPLE"), NO_ERROR);
}

TEST_F(ServiceConfig, ADisplayNameIsNotGivenTwice) {
  ASSERT_EQ(Create({}), NO_ERROR);
  EXPECT_EQ(Create({.name = L"other", .displayName = L"a SAMPLE"}), ERROR_DUPLICATE_SERVICE_NAME);
  EXPECT_EQ(Create({.name = L"other", .displayName = L"sample"}), ERROR_DUPLICATE_SERVICE_NAME);
}

TEST_F(ServiceConfig, WhatWasStoredIsAnsweredAndChangedValueByValue) {
  ASSERT_EQ(Create({.type = SERVICE_WIN32_OWN_PROCESS | SERVICE_INTERACTIVE_PROCESS}), NO_ERROR);
  const ScHandle service = Open(L"sample");
  ASSERT_TRUE(::ChangeServiceConfigW(service.Get(), SERVICE_NO_CHANGE, SERVICE_AUTO_START,
                                     SERVICE_NO_CHANGE, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     nullptr, L"Renamed"));
  std::vector<std::byte> buffer = Query(service);
  const auto* config = ConfigIn(buffer);
  EXPECT_EQ(config->dwServiceType, 0x110u);
  EXPECT_EQ(config->dwStartType, SERVICE_AUTO_START);
  EXPECT_EQ(config->dwErrorControl, SERVICE_ERROR_NORMAL);
  EXPECT_STREQ(config->lpBinaryPathName, L"\\opt\\sample");
  EXPECT_STREQ(config->lpDisplayName, L"Renamed");
  EXPECT_STREQ(config->lpServiceStartName, L"LocalSystem");
  EXPECT_STREQ(config->lpLoadOrderGroup, L"");
  EXPECT_STREQ(config->lpDependencies, L"");
}

TEST_F(ServiceConfig, AnInvalidChangeLeavesTheRecordAsItWas) {
  ASSERT_EQ(Create({}), NO_ERROR);
  const ScHandle service = Open(L"sample");
  EXPECT_EQ(ErrorOf(::ChangeServiceConfigW(service.Get(), SERVICE_NO_CHANGE, 9, SERVICE_NO_CHANGE,
                                           L"\\other", nullptr, nullptr, nullptr, nullptr, nullptr,
                                           nullptr)),
            ERROR_INVALID_PARAMETER);
  std::vector<std::byte> buffer = Query(service);
  EXPECT_STREQ(ConfigIn(buffer)->lpBinaryPathName, L"\\opt\\sample");
}

TEST_F(ServiceConfig, AHandleWithoutTheRightDoesNothing) {
  ASSERT_EQ(Create({}), NO_ERROR);
  SERVICE_STATUS status{};
  DWORD needed = 0;
  const ScHandle query = Open(L"sample", SERVICE_QUERY_STATUS);
  EXPECT_EQ(ErrorOf(::StartServiceW(query.Get(), 0, nullptr)), ERROR_ACCESS_DENIED);
  EXPECT_EQ(ErrorOf(::DeleteService(query.Get())), ERROR_ACCESS_DENIED);
  EXPECT_EQ(ErrorOf(::ControlService(query.Get(), 1, &status)), ERROR_ACCESS_DENIED);
  EXPECT_EQ(ErrorOf(::ControlService(query.Get(), 128, &status)), ERROR_ACCESS_DENIED);
  EXPECT_EQ(ErrorOf(::QueryServiceConfigW(query.Get(), nullptr, 0, &needed)), ERROR_ACCESS_DENIED);
  const ScHandle start = Open(L"sample", SERVICE_START);
  EXPECT_EQ(ErrorOf(::QueryServiceStatus(start.Get(), &status)), ERROR_ACCESS_DENIED);
  const ScHandle connected(::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
  const ScHandle created(::CreateServiceW(connected.Get(), L"x", nullptr, 0, 0x10, 3, 1, L"\\x",
                                          nullptr, nullptr, nullptr, nullptr, nullptr));
  EXPECT_EQ(created.Get(), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_ACCESS_DENIED);
}

TEST_F(ServiceConfig, AForeignOrClosedHandleIsInvalid) {
  ASSERT_EQ(Create({}), NO_ERROR);
  SERVICE_STATUS status{};
  EXPECT_EQ(ErrorOf(::QueryServiceStatus(manager_.Get(), &status)), ERROR_INVALID_HANDLE);
  const SC_HANDLE closed = ::OpenServiceW(manager_.Get(), L"sample", SERVICE_ALL_ACCESS);
  EXPECT_TRUE(::CloseServiceHandle(closed));
  EXPECT_EQ(ErrorOf(::QueryServiceStatus(closed, &status)), ERROR_INVALID_HANDLE);
  EXPECT_EQ(ErrorOf(::CloseServiceHandle(closed)), ERROR_INVALID_HANDLE);
  EXPECT_EQ(ErrorOf(::StartServiceW(nullptr, 0, nullptr)), ERROR_INVALID_HANDLE);
}

TEST_F(ServiceConfig, AnotherMachineOrDatabaseIsNotThere) {
  EXPECT_EQ(::OpenSCManagerW(L"other", nullptr, SC_MANAGER_CONNECT), nullptr);
  EXPECT_EQ(::GetLastError(), RPC_S_SERVER_UNAVAILABLE);
  EXPECT_EQ(::OpenSCManagerW(nullptr, L"ServicesFailed", SC_MANAGER_CONNECT), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_DATABASE_DOES_NOT_EXIST);
  EXPECT_EQ(::OpenSCManagerW(nullptr, L"nonsense", SC_MANAGER_CONNECT), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_NAME);
}

TEST_F(ServiceConfig, ADeletedServiceIsGoneAndItsHandleSaysSo) {
  ASSERT_EQ(Create({}), NO_ERROR);
  const ScHandle service = Open(L"sample");
  ASSERT_TRUE(::DeleteService(service.Get()));
  EXPECT_EQ(OpenError(L"sample"), ERROR_SERVICE_DOES_NOT_EXIST);
  EXPECT_EQ(ErrorOf(::DeleteService(service.Get())), ERROR_SERVICE_MARKED_FOR_DELETE);
  EXPECT_EQ(ErrorOf(::StartServiceW(service.Get(), 0, nullptr)), ERROR_SERVICE_MARKED_FOR_DELETE);
  EXPECT_EQ(StateOf(service), SERVICE_STOPPED);
  EXPECT_EQ(Create({}), NO_ERROR);
}

// A record that somebody has damaged counts as no service and can be replaced, not trusted.
TEST_F(ServiceConfig, ADamagedRecordIsNoService) {
  const struct {
    const wchar_t* value;
    DWORD type;
    std::string data;
  } damages[] = {
      {L"Type", REG_SZ, std::string(8, 'x')},
      {L"Type", REG_DWORD, std::string(1, '\1')},
      {L"Start", REG_BINARY, std::string(4, '\0')},
      {L"ImagePath", REG_DWORD, std::string(4, '\0')},
      {L"ErrorControl", REG_NONE, ""},
  };
  for (const auto& damage : damages) {
    ASSERT_EQ(Create({}), NO_ERROR);
    HKEY key = nullptr;
    ASSERT_EQ(::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SYSTEM\\CurrentControlSet\\Services\\sample", 0,
                              KEY_WRITE, &key),
              ERROR_SUCCESS);
    ASSERT_EQ(::RegSetValueExW(key, damage.value, 0, damage.type,
                               reinterpret_cast<const BYTE*>(damage.data.data()),
                               static_cast<DWORD>(damage.data.size())),
              ERROR_SUCCESS);
    ::RegCloseKey(key);
    EXPECT_EQ(OpenError(L"sample"), ERROR_SERVICE_DOES_NOT_EXIST) << (&damage - damages);
    EXPECT_EQ(Create({}), NO_ERROR) << (&damage - damages);
    EXPECT_TRUE(::DeleteService(Open(L"sample").Get()));
  }
}

}  // namespace
