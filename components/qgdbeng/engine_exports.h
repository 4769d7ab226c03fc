// The entry points of the engine library, which programs load by name. Texts are UTF-8 and end with
// a NUL. Result codes are SQLite's primary ones: 0 success, 1 error in the statement, 5 and 6 busy
// and locked, 17 schema changed, 21 the connection cannot be used: it was never opened, it is
// closed, or its file was moved or replaced, so that it must be reopened. Any thread; statements of
// one connection run one after the other. No exceptions leave these functions.
#pragma once

#pragma GCC visibility push(default)
extern "C" {

// Opens the database file. A missing one is created, readable by its owner only. Backslashes
// separate folders as slashes do. `mode` must be 0. A folder, a file that is not a database (which
// stays unchanged) and a file that cannot be written are refused. Returns null on failure; *message
// is then a text to release with dbengproc18. Statements never wait for other processes: they
// return 5.
void* dbengproc1(const char* path, int mode, char** message) noexcept;

// Closes the connection. Ignored when it is not open.
void dbengproc2(void* connection) noexcept;

// The result code of the latest statement of this connection; 21 when it is not open.
int dbengproc3(void* connection) noexcept;

// The rows that the latest INSERT, UPDATE or DELETE changed; 0 when the connection is not open.
int dbengproc4(void* connection) noexcept;

// 1 while a transaction is open on this connection, else 0.
int dbengproc5(void* connection) noexcept;

// The meaning of a result code, in English. Never null, not to be released.
const char* dbengproc6(int code) noexcept;

// Runs one statement. On success *table holds (*rows + 1) * *columns texts: the column names, then
// the values row after row, null for NULL; release it with dbengproc11. A statement without rows
// returns 0 rows, 0 columns and a table that needs no release. Text with more than one statement is
// refused with code 1 before any of it runs. On failure *table is null and *message a text to
// release with dbengproc18; `message` itself may be null.
int dbengproc10(void* connection, const char* sql, char*** table, int* rows, int* columns,
                char** message) noexcept;

// Releases a result table; null is ignored.
void dbengproc11(char** table) noexcept;

// Releases an error text; null is ignored.
void dbengproc18(char* message) noexcept;

// The engine's version, such as "3.40.1". Not to be released.
const char* dbengproc19() noexcept;

}  // extern "C"
#pragma GCC visibility pop
