// A result table: one array of pointers to texts, and a few large pieces of memory that hold the
// texts. A result of many rows costs a handful of allocations instead of one for each value.
#pragma once

#include <cstddef>

namespace quillgate::engine {

class TableBuilder {
 public:
  TableBuilder() = default;
  ~TableBuilder();
  TableBuilder(const TableBuilder&) = delete;
  TableBuilder& operator=(const TableBuilder&) = delete;

  // Adds one value, copied; null stands for NULL. False when there is no memory.
  bool Add(const char* text, std::size_t bytes);

  // Hands the table over; release it with FreeTable. An empty one is shared and is never null.
  char** Release();

 private:
  struct Chunk;
  struct Header;
  friend void FreeTable(char** table);

  static char** CellsOf(Header* header);
  static void FreeChunks(Chunk* chunk);
  bool GrowCells();
  bool GrowText(std::size_t bytes);

  Header* header_ = nullptr;
  std::size_t cells_ = 0;
  std::size_t capacity_ = 0;
  Chunk* chunks_ = nullptr;
  char* free_ = nullptr;  // the unused rest of the latest chunk
  std::size_t freeBytes_ = 0;
  std::size_t chunkBytes_ = 0;
};

// Null and the shared empty table are fine.
void FreeTable(char** table);

}  // namespace quillgate::engine
