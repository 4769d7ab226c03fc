// What a compiled help file holds: topics, pictures and style sheets by their paths, and the
// settings that it was compiled with. A value; once read it is not changed and may be shared by
// threads.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class HelpFile {
 public:
  // Adds the file "/html/index.html". Paths differ in more than case: a second file of the same
  // path is ignored.
  void Add(std::wstring path, std::string bytes);

  // The bytes of the file of that path, in any case; null when there is none.
  const std::string* Find(std::wstring_view path) const;
  // The paths that end in ".htm" or ".html", in alphabetical order.
  std::vector<std::wstring> Topics() const;

 private:
  struct Entry {
    std::wstring path;
    std::string bytes;
  };
  std::map<std::wstring, Entry> entries_;  // by lower-case path
};

// Empty members: not set. Paths are as the author wrote them, without a leading slash.
struct HelpSettings {
  std::wstring title;
  std::wstring contents;  // the site map
  std::wstring defaultTopic;

  bool operator==(const HelpSettings&) const = default;
};

HelpSettings SettingsOf(const HelpFile& file);

// The text of a file, in UTF-8 or else in the western code page of Windows, as older compilers
// require. A byte order mark is dropped.
std::wstring HelpTextOf(std::string_view bytes);

}  // namespace platform
