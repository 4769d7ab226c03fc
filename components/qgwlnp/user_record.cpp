#include "user_record.h"

#include <windows.h>

#include "engine_database.h"
#include "event_report.h"

namespace quillgate::notifier {
namespace {

constexpr DWORD kRetryMilliseconds = 100;
constexpr DWORD kLongestMilliseconds = 60'000;

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char each : text) {
    if (each == '\'') quoted += '\'';
    quoted += each;
  }
  return quoted + '\'';
}

void ReplaceOnce(const EngineLibrary& library, const std::string& path,
                 const std::string& insertion) {
  EngineConnection database(library, path);
  database.Run("BEGIN IMMEDIATE;");
  database.Run("CREATE TABLE IF NOT EXISTS WlNpData (Key, Value);");
  database.Run("DELETE FROM WlNpData;");
  if (!insertion.empty()) database.Run(insertion);
  database.Run("COMMIT;");
}

}  // namespace

std::string UserRecord::Store(const std::wstring& name) const {
  return Replace("INSERT INTO WlNpData VALUES ('UserName', " + Quoted(Narrow(name)) + ");");
}

std::string UserRecord::Remove() const {
  return Replace({});
}

// Others use the file for moments or, as a copy does, for longer; a full disk or a missing folder
// may be put right as well.
std::string UserRecord::Replace(const std::string& insertion) const try {
  const EngineLibrary& library = EngineLibrary::In(folder_);
  const std::string path = Narrow(folder_ + L"quillgate.dat");
  const DWORD start = ::GetTickCount();
  for (;;) {
    try {
      ReplaceOnce(library, path, insertion);
      return {};
    } catch (const EngineError& error) {
      if (::GetTickCount() - start >= kLongestMilliseconds) return error.what();
    }
    ::Sleep(kRetryMilliseconds);
  }
} catch (const EngineError& error) {
  return error.what();
}

}  // namespace quillgate::notifier
