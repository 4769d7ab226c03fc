// SQLite's own VFS without its pauses. To begin reading from a write-ahead log, SQLite retries a
// hundred times with pauses that add up to ten seconds, without calling the busy handler.
// Statements of this library never wait for other processes, so the pauses are skipped. On Windows,
// a file that is held, such as by a virus scanner, is still retried for a second or so. Any thread.
#pragma once

namespace quillgate::engine {

// The name of the VFS to open files with; null, which means the default, when it cannot be
// registered.
const char* NoWaitVfs();

}  // namespace quillgate::engine
