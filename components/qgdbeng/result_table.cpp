#include "result_table.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace quillgate::engine {

namespace {

constexpr std::size_t kFirstCells = 32;
constexpr std::size_t kFirstChunkBytes = 1024;
constexpr std::size_t kLargestChunkBytes = 256 * 1024;

char* emptyTable[1] = {nullptr};

}  // namespace

// The texts follow the chunk in the same allocation, and the pointers follow the header.
struct TableBuilder::Chunk {
  Chunk* next;
};
struct TableBuilder::Header {
  Chunk* chunks;
};

char** TableBuilder::CellsOf(Header* header) {
  return reinterpret_cast<char**>(header + 1);
}

void TableBuilder::FreeChunks(Chunk* chunk) {
  while (chunk != nullptr) {
    Chunk* const next = chunk->next;
    std::free(chunk);
    chunk = next;
  }
}

TableBuilder::~TableBuilder() {
  FreeChunks(chunks_);
  std::free(header_);
}

bool TableBuilder::GrowCells() {
  const std::size_t capacity = std::max(kFirstCells, capacity_ * 2);
  void* const memory = std::realloc(header_, sizeof(Header) + capacity * sizeof(char*));
  if (memory == nullptr) return false;
  header_ = static_cast<Header*>(memory);
  capacity_ = capacity;
  return true;
}

bool TableBuilder::GrowText(std::size_t bytes) {
  chunkBytes_ = std::clamp(chunkBytes_ * 2, kFirstChunkBytes, kLargestChunkBytes);
  const std::size_t size = std::max(bytes, chunkBytes_);
  void* const memory = std::malloc(sizeof(Chunk) + size);
  if (memory == nullptr) return false;
  auto* const chunk = static_cast<Chunk*>(memory);
  chunk->next = chunks_;
  chunks_ = chunk;
  free_ = reinterpret_cast<char*>(chunk + 1);
  freeBytes_ = size;
  return true;
}

bool TableBuilder::Add(const char* text, std::size_t bytes) {
  if (cells_ == capacity_ && !GrowCells()) return false;
  char*& cell = CellsOf(header_)[cells_];
  if (text == nullptr) {
    cell = nullptr;
  } else {
    const std::size_t size = bytes + 1;
    if (freeBytes_ < size && !GrowText(size)) return false;
    std::memcpy(free_, text, bytes);
    free_[bytes] = '\0';
    cell = free_;
    free_ += size;
    freeBytes_ -= size;
  }
  ++cells_;
  return true;
}

char** TableBuilder::Release() {
  if (header_ == nullptr) return emptyTable;
  char** const table = CellsOf(header_);
  header_->chunks = chunks_;
  header_ = nullptr;
  chunks_ = nullptr;
  return table;
}

void FreeTable(char** table) {
  if (table == nullptr || table == emptyTable) return;
  auto* const header = reinterpret_cast<TableBuilder::Header*>(table) - 1;
  TableBuilder::FreeChunks(header->chunks);
  std::free(header);
}

}  // namespace quillgate::engine
