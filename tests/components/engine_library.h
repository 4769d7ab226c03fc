// The engine library as a program meets it: loaded by name from the folder of the executable, its
// entry points fetched by their names.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quillgate {

// Result codes of the engine.
inline constexpr int kError = 1;
inline constexpr int kBusy = 5;
inline constexpr int kFull = 13;
inline constexpr int kMisuse = 21;

// What one statement answered; texts are copies.
struct EngineResult {
  int code = -1;
  std::string message;
  std::vector<std::string> columns;
  std::vector<std::vector<std::optional<std::string>>> rows;  // nothing stands for NULL

  // The only value of the only row; fails the test when the result has another shape.
  std::optional<std::string> Value() const;
};

struct EngineEntryPoints {
  void* (*open)(const char* path, int mode, char** message);
  void (*close)(void* connection);
  int (*latestCode)(void* connection);
  int (*changedRows)(void* connection);
  int (*inTransaction)(void* connection);
  const char* (*meaning)(int code);
  int (*getTable)(void* connection, const char* sql, char*** table, int* rows, int* columns,
                  char** message);
  void (*freeTable)(char** table);
  void (*freeMessage)(char* message);
  const char* (*version)();
};

// Loaded once and for the whole process; throws std::runtime_error when anything is missing.
const EngineEntryPoints& Engine();

// One open database, closed at the end.
class EngineConnection {
 public:
  // Check IsOpen afterwards; Message() is the reason when it is not.
  explicit EngineConnection(const std::filesystem::path& path);
  ~EngineConnection();
  EngineConnection(const EngineConnection&) = delete;
  EngineConnection& operator=(const EngineConnection&) = delete;

  bool IsOpen() const { return connection_ != nullptr; }
  const std::string& Message() const { return message_; }
  void* Get() const { return connection_; }

  EngineResult Run(const std::string& sql);
  void Close();

 private:
  void* connection_ = nullptr;
  std::string message_;
};

EngineResult RunStatement(void* connection, const char* sql);

}  // namespace quillgate
