// Runs the editor of connection hours alone: hours_host LANGUAGE FIRST_DAY opens it on the desktop,
// with office hours allowed on weekdays and the mornings at the weekend. Prints "OK" or "Cancel",
// as the dialog was closed, and then the 168 digits of the table. LANGUAGE is a language
// identifier, 1033 or 1053; FIRST_DAY is 0 for Sunday ... 6.
#include <windows.h>

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "frame/help_system.h"
#include "service/command_line.h"
#include "settings/hours_dialog.h"
#include "storage/settings.h"

namespace quillgate {
namespace {

constexpr std::size_t kHours = 24;

struct Span {
  std::size_t begin;
  std::size_t end;
};
constexpr Span kOffice{8, 17};
constexpr Span kMorning{7, 12};

HoursTable AllowedWhenPeopleWork() {
  HoursTable hours{};
  for (std::size_t i = 0; i < hours.size(); ++i) {
    const std::size_t day = i / kHours;
    const std::size_t hour = i % kHours;
    const Span allowed = day >= 1 && day <= 5 ? kOffice : kMorning;
    hours[i] = hour < allowed.begin || hour >= allowed.end;
  }
  return hours;
}

void Print(bool accepted, const HoursTable& hours) {
  std::string digits;
  for (const bool blocked : hours)
    digits += blocked ? '1' : '0';
  std::printf("%s\n%s\n", accepted ? "OK" : "Cancel", digits.c_str());
}

int Run(const std::vector<std::wstring>& words) {
  if (words.size() != 3) {
    std::fputs("usage: hours_host LANGUAGE FIRST_DAY\n", stderr);
    return 2;
  }
  Database database;
  Settings settings(database);
  settings.SetSetting(SettingKey::kFirstDayOfWeek, words[2]);
  MessageCatalogue catalogue;
  catalogue.SetInterfaceLanguage(SettingNumber(words[1]));
  HelpSystem help;
  HoursTable hours = AllowedWhenPeopleWork();
  const StopRequest stop;
  HoursDialog dialog({catalogue, help, stop}, settings, nullptr, hours);
  const bool accepted = dialog.Run();
  if (accepted) hours = dialog.Hours();
  Print(accepted, hours);
  return 0;
}

}  // namespace
}  // namespace quillgate

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  try {
    return quillgate::Run(quillgate::CommandLineWords());
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "hours_host: %s\n", failure.what());
    return 1;
  }
}
