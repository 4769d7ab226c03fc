#include "user_record.h"

#include <windows.h>

#include "engine_database.h"
#include "event_report.h"

namespace quillgate::notifier {
namespace {

constexpr DWORD kRetryMilliseconds = 100;

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

std::string UserRecord::Store(const std::wstring& name, std::chrono::milliseconds limit) const {
  return Replace("INSERT INTO WlNpData VALUES ('UserName', " + Quoted(Narrow(name)) + ");", limit);
}

std::string UserRecord::Remove(std::chrono::milliseconds limit) const {
  return Replace({}, limit);
}

// Others use the file for moments or, as a copy does, for longer; a full disk or a missing folder
// may be put right as well.
std::string UserRecord::Replace(const std::string& insertion,
                                std::chrono::milliseconds limit) const {
  const std::string path = Narrow(folder_ + L"quillgate.dat");
  const DWORD start = ::GetTickCount();
  for (;;) {
    try {
      ReplaceOnce(EngineLibrary::In(folder_), path, insertion);
      return {};
    } catch (const EngineError& error) {
      if (::GetTickCount() - start >= limit.count()) return error.what();
    }
    ::Sleep(kRetryMilliseconds);
  }
}

}  // namespace quillgate::notifier
