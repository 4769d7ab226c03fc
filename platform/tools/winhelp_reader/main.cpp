// Decodes a compiled help file and writes the files in it to standard output (help_stream.h). The
// help viewer starts it for each file that it opens: the decoding library trusts what it reads, so
// a damaged file may crash it or keep it busy for ever, and then only this program ends.
//
// Usage: winhelp_reader FILE
#include <chm_lib.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>
#include <vector>

#include "platform/shell/help_stream.h"

namespace {

using platform::HelpStreamHeader;

constexpr rlim_t kMostSeconds = 1;
constexpr std::string_view kSettingsPath = "/#SYSTEM";

// The files of the help; what else there is serves the compiler's own viewer.
constexpr int kWanted = CHM_ENUMERATE_NORMAL | CHM_ENUMERATE_SPECIAL | CHM_ENUMERATE_FILES;

struct Total {
  std::size_t files = 0;
  std::size_t bytes = 0;
};

// The kernel ends the program then.
bool LimitTime() {
  const rlimit limit{kMostSeconds, kMostSeconds};
  const rlimit noDump{0, 0};
  return ::setrlimit(RLIMIT_CPU, &limit) == 0 && ::setrlimit(RLIMIT_CORE, &noDump) == 0;
}

bool Write(const void* bytes, std::size_t size) {
  return std::fwrite(bytes, 1, size, stdout) == size;
}

bool WriteHeader(std::size_t pathBytes, std::size_t fileBytes) {
  const HelpStreamHeader header{static_cast<std::uint32_t>(pathBytes),
                                static_cast<std::uint32_t>(fileBytes)};
  return Write(&header, sizeof header);
}

bool IsWanted(const chmUnitInfo& unit) {
  return (unit.flags & CHM_ENUMERATE_NORMAL) != 0 || unit.path == kSettingsPath;
}

bool CountIn(Total& total, const chmUnitInfo& unit) {
  if (unit.length > platform::kMostHelpBytes) return false;
  ++total.files;
  total.bytes += sizeof(HelpStreamHeader) + std::string_view(unit.path).size() + unit.length;
  return total.files < platform::kMostHelpFiles && total.bytes < platform::kMostHelpBytes;
}

bool WriteFile(chmFile* file, chmUnitInfo& unit) {
  std::vector<unsigned char> bytes(static_cast<std::size_t>(unit.length));
  const auto length = static_cast<LONGINT64>(unit.length);
  // The library takes a length of zero for a failure.
  if (length > 0 && chm_retrieve_object(file, &unit, bytes.data(), 0, length) != length) {
    return false;
  }
  const std::string_view path = unit.path;
  return WriteHeader(path.size(), bytes.size()) && Write(path.data(), path.size()) &&
         Write(bytes.data(), bytes.size());
}

int OnFile(chmFile* file, chmUnitInfo* unit, void* context) try {
  if (!IsWanted(*unit)) return CHM_ENUMERATOR_CONTINUE;
  const bool written = CountIn(*static_cast<Total*>(context), *unit) && WriteFile(file, *unit);
  return written ? CHM_ENUMERATOR_CONTINUE : CHM_ENUMERATOR_FAILURE;
} catch (const std::exception&) {
  return CHM_ENUMERATOR_FAILURE;
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc != 2 || !LimitTime()) return EXIT_FAILURE;
  chmFile* file = chm_open(argv[1]);
  if (file == nullptr) return EXIT_FAILURE;
  Total total;
  const bool written = chm_enumerate(file, kWanted, OnFile, &total) != 0 && WriteHeader(0, 0) &&
                       std::fflush(stdout) == 0;
  // Without closing the file, which could crash on what the library holds of a damaged one.
  ::_exit(written ? EXIT_SUCCESS : EXIT_FAILURE);
}
