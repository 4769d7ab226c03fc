#include "platform/shell/help_book.h"

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <system_error>
#include <utility>

#include "platform/kernel/locale_source.h"
#include "platform/shell/help_markup.h"
#include "platform/shell/help_reader.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

// Which state of which file a book was read from.
struct Edition {
  fs::path path;
  fs::file_time_type written;
  std::uintmax_t size = 0;

  bool operator==(const Edition&) const = default;
};

struct LastBook {
  std::mutex mutex;
  Edition edition;
  std::shared_ptr<const HelpBook> book;
};

LastBook& Last() {
  static LastBook& last = *new LastBook;
  return last;
}

Edition EditionOf(const fs::path& path) {
  std::error_code error;
  Edition edition;
  edition.path = path;
  edition.written = fs::last_write_time(path, error);
  edition.size = fs::file_size(path, error);
  return edition;
}

std::vector<HelpTopic> TopicsOf(const HelpFile& file) {
  std::vector<HelpTopic> topics;
  for (std::wstring& path : file.Topics()) {
    TopicText topic = TextOfTopic(HelpTextOf(*file.Find(path)));
    std::wstring title = topic.title.empty() ? path : std::move(topic.title);
    topics.push_back({std::move(path), std::move(title), std::move(topic.text)});
  }
  std::ranges::stable_sort(topics, [](const HelpTopic& left, const HelpTopic& right) {
    return CompareTexts(left.title, right.title) < 0;
  });
  return topics;
}

std::vector<HelpEntry> ContentsOf(const HelpBook& book, const std::wstring& siteMap) {
  const auto path = ResolveHelpAddress(L"/", siteMap);
  const std::string* found = path.has_value() ? book.file.Find(path->path) : nullptr;
  std::vector<HelpEntry> contents;
  if (found != nullptr) contents = ParseSiteMap(HelpTextOf(*found), path->path);
  if (!contents.empty()) return contents;
  for (const HelpTopic& topic : book.topics)
    contents.push_back({topic.title, HelpTarget{topic.path, {}}, 0});
  return contents;
}

HelpTarget HomeOf(const HelpBook& book, const std::wstring& defaultTopic) {
  const auto home = ResolveHelpAddress(L"/", defaultTopic);
  if (home.has_value() && !home->path.empty()) return *home;
  for (const HelpEntry& entry : book.contents) {
    if (entry.target.has_value()) return *entry.target;
  }
  return {};
}

}  // namespace

HelpBook MakeHelpBook(HelpFile file) {
  const HelpSettings settings = SettingsOf(file);
  HelpBook book;
  book.file = std::move(file);
  book.title = settings.title;
  book.topics = TopicsOf(book.file);
  book.contents = ContentsOf(book, settings.contents);
  book.home = HomeOf(book, settings.defaultTopic);
  return book;
}

std::shared_ptr<const HelpBook> OpenHelpBook(const fs::path& path) {
  const Edition edition = EditionOf(path);
  LastBook& last = Last();
  const std::lock_guard lock(last.mutex);
  if (last.book != nullptr && last.edition == edition) return last.book;
  auto file = ReadHelpFile(path);
  if (!file.has_value()) return nullptr;
  last.book = std::make_shared<const HelpBook>(MakeHelpBook(std::move(*file)));
  last.edition = edition;
  return last.book;
}

}  // namespace platform
