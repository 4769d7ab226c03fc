// The name that the logon notification package has left for the program.
#include "service/windows_logon_name.h"

#include "service_test.h"

namespace quillgate {
namespace {

TEST_F(ServiceTest, TheWindowsNameIsTheValueOfExactlyOneRow) {
  WindowsLogonName name(objects_.GetDatabase());
  EXPECT_THROW(name.UserName(), DBerror);
  Execute(L"CREATE TABLE WlNpData (Key, Value);");
  EXPECT_EQ(name.UserName(), L"");
  Execute(L"INSERT INTO WlNpData VALUES ('Other', 'Bo');");
  EXPECT_EQ(name.UserName(), L"");
  Execute(L"INSERT INTO WlNpData VALUES ('UserName', 'Anna');");
  EXPECT_EQ(name.UserName(), L"Anna");
  Execute(L"INSERT INTO WlNpData VALUES ('UserName', 'Anna');");
  EXPECT_EQ(name.UserName(), L"");
}

}  // namespace
}  // namespace quillgate
