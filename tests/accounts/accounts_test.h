// What the tests of this folder share: a machine of their own with a database in its program
// folder.
#pragma once

#include <gtest/gtest.h>

#include "accounts/user_collection.h"
#include "platform/testing/simulated_machine.h"

namespace quillgate {

class AccountsTest : public testing::Test {
 protected:
  DbRows Query(const std::wstring& sql) {
    DbRows rows;
    database_.DbQuery(sql, rows);
    return rows;
  }

  // The ten columns of a user as the table holds them.
  void InsertRow(const std::wstring& table, const DbRow& row) {
    std::wstring values;
    for (const std::wstring& value : row)
      values += (values.empty() ? L"'" : L", '") + value + L"'";
    database_.DbExecute(L"INSERT INTO " + table + L" VALUES (" + values + L");");
  }

  static std::shared_ptr<User> MakeUser(const std::wstring& name, bool administrator = false) {
    auto user = std::make_shared<User>(name);
    user->AssignAdministrator(administrator);
    return user;
  }

  platform::SimulatedMachine machine_;
  Database database_;
  Settings settings_{database_};
};

}  // namespace quillgate
