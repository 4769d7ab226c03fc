// The process that the kill test kills: it does the program's writing over and over, on a simulated
// machine with the real database engine, and reports each thing that is done.
#pragma once

namespace quillgate {

inline constexpr const char* kVictimWord = "--victim";

// Words: kind ("sessions" or "users"), database file, file to append reports to, round. Runs until
// it is killed; answers 1 if it cannot go on. Reports are lines of words with "|" between them:
// "running" or "ended", start date, seconds; or "saved", number of the save.
int RunVictim(int wordCount, char** words);

}  // namespace quillgate
