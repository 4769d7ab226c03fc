#include "service/windows_logon_name.h"

namespace quillgate {

std::wstring WindowsLogonName::UserName() {
  DbRows rows;
  database_.DbQuery(L"SELECT Value FROM WlNpData WHERE Key = 'UserName';", rows);
  if (rows.size() != 1) return {};
  return rows.front().at(0);
}

}  // namespace quillgate
