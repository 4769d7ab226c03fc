// A compiled help file, ready to be read: title, contents, topics as text. Made once for each file
// and shared; not changed then. Any thread.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/shell/help_contents.h"
#include "platform/shell/help_file.h"

namespace platform {

struct HelpTopic {
  std::wstring path;
  std::wstring title;  // without one: the path
  std::wstring text;
};

struct HelpBook {
  HelpFile file;
  std::wstring title;               // may be empty
  HelpTarget home;                  // the default topic, else the first
  std::vector<HelpEntry> contents;  // the author's, else every topic
  std::vector<HelpTopic> topics;    // in alphabetical order of their titles
};

HelpBook MakeHelpBook(HelpFile file);

// Reads the file, or returns the book read last if it was this file and has not changed since.
// Null, with a line in the log, as for ReadHelpFile.
std::shared_ptr<const HelpBook> OpenHelpBook(const std::filesystem::path& path);

}  // namespace platform
