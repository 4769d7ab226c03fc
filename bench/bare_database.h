// What the benchmarks of the database compare with: a connection to the same file without the query
// layer. Both sides of a comparison run alternately in one process.
#pragma once

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "encoding/multibyte.h"
#include "storage/database.h"
#include "timing.h"

namespace quillgate {

class BareDatabase {
 public:
  explicit BareDatabase(const std::string& path) { Check(sqlite3_open(path.c_str(), &database_)); }
  ~BareDatabase() { sqlite3_close(database_); }
  BareDatabase(const BareDatabase&) = delete;
  BareDatabase& operator=(const BareDatabase&) = delete;

  void Execute(const char* sql) { Check(sqlite3_exec(database_, sql, nullptr, nullptr, nullptr)); }

  // Runs the statement once through the table interface of the database; the number of rows.
  std::size_t GetTable(const std::string& sql) {
    char** table = nullptr;
    int rows = 0;
    int columns = 0;
    Check(sqlite3_get_table(database_, sql.c_str(), &table, &rows, &columns, nullptr));
    benchmark::DoNotOptimize(table);
    sqlite3_free_table(table);
    return static_cast<std::size_t>(rows);
  }

  sqlite3* Get() const { return database_; }

 private:
  static void Check(int code) {
    if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errstr(code));
  }

  sqlite3* database_ = nullptr;
};

// Runs both alternately, each equally often first and second, and reports the medians and their
// ratio.
template <class Bare, class Layer>
void Compare(benchmark::State& state, Bare bare, Layer layer) {
  std::vector<double> bareTimes;
  std::vector<double> layerTimes;
  bare();
  layer();
  for (auto _ : state) {
    if (bareTimes.size() % 2 == 0) {
      bareTimes.push_back(bench::SecondsOf(bare));
      layerTimes.push_back(bench::SecondsOf(layer));
    } else {
      layerTimes.push_back(bench::SecondsOf(layer));
      bareTimes.push_back(bench::SecondsOf(bare));
    }
    state.SetIterationTime(layerTimes.back());
  }
  state.counters["bare_us"] = bench::Median(bareTimes) * 1e6;
  state.counters["layer_us"] = bench::Median(layerTimes) * 1e6;
  state.counters["ratio"] = bench::Median(layerTimes) / bench::Median(bareTimes);
}

// The statements, one after another.
inline void CompareQueries(benchmark::State& state, BareDatabase& bare, Database& database,
                           const std::vector<std::wstring>& statements) {
  std::vector<std::string> narrow;
  for (const std::wstring& sql : statements)
    narrow.push_back(Narrow(sql));
  std::size_t bareRows = 0;
  std::size_t layerRows = 0;
  Compare(
      state,
      [&] {
        bareRows = 0;
        for (const std::string& sql : narrow)
          bareRows += bare.GetTable(sql);
      },
      [&] {
        layerRows = 0;
        for (const std::wstring& sql : statements) {
          DbRows rows;
          database.DbQuery(sql, rows);
          benchmark::DoNotOptimize(rows.data());
          layerRows += rows.size();
        }
      });
  state.counters["rows"] = static_cast<double>(layerRows);
  if (layerRows == 0 || layerRows != bareRows) state.SkipWithError("the rows differ");
}

}  // namespace quillgate
