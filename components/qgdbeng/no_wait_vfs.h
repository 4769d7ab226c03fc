// SQLite's own way to files, but for its pauses. To begin reading from a write-ahead log, SQLite
// tries a hundred times with pauses that add up to ten seconds, without asking the busy handler;
// statements of this library never wait for other processes, so the pauses take no time. On
// Windows, a file that is held as by a virus scanner is still tried again, for a second or so. Any
// thread.
#pragma once

namespace quillgate::engine {

// The name to open files with; null, the default, when it cannot be had.
const char* NoWaitVfs();

}  // namespace quillgate::engine
