#include "platform/service/unit_text.h"

#include <winsvc.h>

#include <cctype>
#include <sstream>

#include "platform/kernel/encoding.h"
#include "platform/service/service_channel.h"
#include "platform/service/service_program.h"

namespace platform {
namespace {

constexpr char kDigits[] = "0123456789abcdef";

std::string Escaped(unsigned char byte) {
  return {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 0xF]};
}

bool IsControl(char letter) {
  return std::iscntrl(static_cast<unsigned char>(letter)) != 0;
}

// One word of a directive that has words, quoted. "%" would begin a specifier.
std::string Word(std::string_view text) {
  std::string word = "\"";
  for (const char letter : text) {
    if (letter == '"' || letter == '\\') {
      word += '\\';
      word += letter;
    } else if (IsControl(letter)) {
      word += Escaped(static_cast<unsigned char>(letter));
    } else {
      word += letter;
      if (letter == '%') word += '%';
    }
  }
  return word + '"';
}

// A path of a directive that takes patterns, where a backslash would escape the next letter.
std::string Pattern(std::string_view path) {
  std::string pattern;
  for (const char letter : path) {
    if (letter == '\\') pattern += '\\';
    pattern += letter;
  }
  return pattern;
}

// The rest of a line, which knows no quotes. A backslash at its end would continue the line.
std::string Line(std::string_view text, bool isPath) {
  std::string line;
  for (const char letter : text) {
    const bool ends = IsControl(letter) || (letter == '\\' && !isPath);
    line += ends ? ' ' : letter;
    if (letter == '%') line += '%';
  }
  return line;
}

std::string Words(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words)
    line += (line.empty() ? "" : " ") + Word(word);
  return line;
}

// Below /usr nothing is written but by the package manager. Elsewhere a program may keep its files
// beside itself.
std::string WritableFolders(const UnitParts& parts) {
  const std::filesystem::path program = std::filesystem::path(parts.words.front()).parent_path();
  std::string folders = Word(parts.root.native());
  if (!(program.native() + '/').starts_with("/usr/")) folders += ' ' + Word(program.native());
  return folders;
}

// A process that was killed or has failed is started again within a second, for ever; one that has
// ended in order (exit status 0) is not; EX_TEMPFAIL asks for a new process without being a
// failure. No failure is answered with SIGTERM, which is the stop control: a service that hangs or
// starves is killed, and what it has set in the kernel stays.
constexpr std::string_view kLife = R"(Type=notify
NotifyAccess=main
KillMode=mixed
Restart=always
RestartSec=500ms
RestartPreventExitStatus=0
SuccessExitStatus=TEMPFAIL
TimeoutStartSec=30
TimeoutStartFailureMode=kill
TimeoutStopSec=30
WatchdogSec=60
OOMPolicy=continue
OOMScoreAdjust=-900
MemoryMax=512M
TasksMax=64
UMask=0077
)";

constexpr std::string_view kLimits = R"(NoNewPrivileges=yes
ProtectSystem=strict
PrivateTmp=yes
PrivateDevices=yes
ProtectClock=yes
ProtectControlGroups=yes
ProtectHostname=yes
ProtectKernelLogs=yes
ProtectKernelModules=yes
ProtectKernelTunables=yes
ProtectProc=invisible
RestrictAddressFamilies=AF_UNIX AF_NETLINK
IPAddressDeny=any
RestrictNamespaces=yes
RestrictRealtime=yes
RestrictSUIDSGID=yes
LockPersonality=yes
MemoryDenyWriteExecute=yes
KeyringMode=private
SystemCallArchitectures=native
SystemCallFilter=@system-service
SystemCallFilter=~@privileged @resources
SystemCallErrorNumber=EPERM
)";

// A service waits most of the time. The C library would keep what each thread has once had for that
// thread (mallopt(3)).
constexpr std::string_view kSmallHeap = "MALLOC_ARENA_MAX=1 MALLOC_TRIM_THRESHOLD_=65536";

// The display's socket lies in a folder that PrivateTmp hides; the key to it is in the user's home
// or runtime folder, which only its owner may enter. Sessions offer their displays in the service's
// own runtime folder.
constexpr std::string_view kWithDesktop = R"(RuntimeDirectory=%p
RuntimeDirectoryMode=0755
CapabilityBoundingSet=CAP_NET_ADMIN CAP_DAC_READ_SEARCH
ProtectHome=read-only
BindReadOnlyPaths=-/tmp/.X11-unix
)";
constexpr std::string_view kWithoutDesktop = R"(CapabilityBoundingSet=CAP_NET_ADMIN
ProtectHome=yes
)";

}  // namespace

std::string UnitStem(std::wstring_view serviceName) {
  std::string stem;
  for (const char letter : Utf8(LowerName(serviceName))) {
    const auto byte = static_cast<unsigned char>(letter);
    const bool plain = std::isalnum(byte) != 0 || letter == '-' || letter == '_' ||
                       (letter == '.' && !stem.empty());
    stem += plain ? std::string(1, letter) : Escaped(byte);
  }
  return stem;
}

std::string UnitText(const UnitParts& parts) {
  const ServiceRecord& record = parts.record;
  std::ostringstream text;
  text << kUnitMark << "\n[Unit]\nDescription="
       << Line(Utf8(record.displayName), false)
       // Whether the machine goes down is asked at a stop, so the bus ends after it.
       << "\nAfter=dbus.service\nStartLimitIntervalSec=0\n";
  if (record.startType == SERVICE_DISABLED) text << "RefuseManualStart=yes\n";
  // The colon: "$" in a word is no variable.
  text << "\n[Service]\nExecStart=:" << Words(parts.words)
       << "\nWorkingDirectory=" << Line(parts.workingFolder.native(), true) << "\nEnvironment="
       << Words({std::string(kServiceVariable) + '=' + Utf8(record.name),
                 "PATH=" + std::string(kServicePath)})
       << ' ' << kSmallHeap << "\nEnvironmentFile=-"
       << Line(Pattern(parts.environmentFile.native()), true) << '\n'
       << kLife << kLimits << "ReadWritePaths=" << WritableFolders(parts) << '\n';
  const bool interactive = (record.type & SERVICE_INTERACTIVE_PROCESS) != 0;
  text << (interactive ? kWithDesktop : kWithoutDesktop)
       << "\n[Install]\nWantedBy=multi-user.target\n";
  return text.str();
}

}  // namespace platform
