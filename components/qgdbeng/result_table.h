// A result table: one array of pointers to texts, and a few large chunks of memory with the texts.
// A result of many rows needs a few allocations instead of one per value.
#pragma once

#include <cstddef>

namespace quillgate::engine {

class TableBuilder {
 public:
  TableBuilder() = default;
  ~TableBuilder();
  TableBuilder(const TableBuilder&) = delete;
  TableBuilder& operator=(const TableBuilder&) = delete;

  // Adds a copy of one value; null stands for NULL. Returns false when memory is exhausted.
  bool Add(const char* text, std::size_t bytes);

  // Transfers the table to the caller, who releases it with FreeTable. An empty table is shared and
  // never null.
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

// Null and the shared empty table are ignored.
void FreeTable(char** table);

}  // namespace quillgate::engine
