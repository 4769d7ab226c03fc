#include "table_shape.h"

#include <algorithm>

namespace quillgate::gate {

namespace {

std::string_view Trimmed(std::string_view line) {
  const auto start = line.find_first_not_of(" \t");
  if (start == std::string_view::npos) return {};
  return line.substr(start, line.find_last_not_of(" \t") - start + 1);
}

std::string WordAfter(std::string_view line, std::string_view before, std::string_view end = " ") {
  const auto at = line.find(before);
  if (at == std::string_view::npos) return {};
  line.remove_prefix(at + before.size());
  return std::string(line.substr(0, line.find(end)));
}

template <class Read>
void ForEachLine(std::string_view listing, Read read) {
  while (!listing.empty()) {
    const auto end = std::min(listing.find('\n'), listing.size());
    read(listing.substr(0, end));
    listing.remove_prefix(std::min(end + 1, listing.size()));
  }
}

// Parses a listing line by line.
class ShapeReader {
 public:
  void Read(std::string_view line) {
    if (line.empty() || line.starts_with('#')) return;
    if (table_ == nullptr) {
      if (line.starts_with("table ")) table_ = &tables_[WordAfter(line, "table ", " {")];
    } else if (line == "}") {
      Leave();
    } else if (chain_ != nullptr) {
      ReadChainLine(line);
    } else if (!inOther_) {
      ReadTableLine(line);
    }
  }

  std::map<std::string, TableShape> Take() { return std::move(tables_); }

 private:
  void Leave() {
    if (chain_ == nullptr && !inOther_) table_ = nullptr;
    inOther_ = false;
    chain_ = nullptr;
  }

  void ReadTableLine(std::string_view line) {
    if (line.starts_with("chain ")) {
      chain_ = &table_->chains[WordAfter(line, "chain ")];
    } else if (line.ends_with('{')) {
      inOther_ = true;
      if (line.starts_with("set ")) {
        table_->sets.insert(WordAfter(line, "set "));
      } else {
        table_->holdsForeign = true;
      }
    } else if (line.starts_with("flags ") && line.find("dormant") != std::string_view::npos) {
      table_->dormant = true;
    }
  }

  void ReadChainLine(std::string_view line) {
    if (!line.starts_with("type ")) {
      ++chain_->rules;
      return;
    }
    chain_->hook = WordAfter(line, " hook ", " priority");
    chain_->priority = WordAfter(line, " priority ", ";");
    chain_->drops = line.find("policy drop;") != std::string_view::npos;
  }

  std::map<std::string, TableShape> tables_;
  TableShape* table_ = nullptr;
  ChainShape* chain_ = nullptr;
  bool inOther_ = false;
};

}  // namespace

std::map<std::string, TableShape> ReadTableShapes(std::string_view listing) {
  ShapeReader reader;
  ForEachLine(listing, [&reader](std::string_view line) { reader.Read(Trimmed(line)); });
  return reader.Take();
}

std::string WithoutVolatile(std::string_view listing) {
  const std::string leaseBegin = std::string("set ") + kLeaseSet + " {";
  std::string result;
  bool isInLease = false;
  ForEachLine(listing, [&](std::string_view line) {
    constexpr std::string_view kTableFlags = "\tflags ";
    const bool isDormant = line.find("dormant") != std::string_view::npos;
    if (line.starts_with(kTableFlags) && !isDormant) return;
    const std::string_view words = Trimmed(line);
    if (words == "}") isInLease = false;
    if (isInLease && !words.starts_with("type ") && !words.starts_with("flags ")) return;
    if (words == leaseBegin) isInLease = true;
    if (line.starts_with("table ")) line = line.substr(0, line.find(" #"));
    result.append(line).push_back('\n');
  });
  return result;
}

}  // namespace quillgate::gate
