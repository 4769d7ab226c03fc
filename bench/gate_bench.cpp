// Measures the cost of the gate: the time of a complete change, and the throughput with an open
// gate, and of local traffic past a closed one, as ratios to the throughput without a gate. Runs in
// network namespaces of its own.
#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "download_source.h"
#include "lab/hook_driver.h"
#include "lab/network_lab.h"
#include "timing.h"

namespace {

using bench::Clock;
using bench::Median;
using bench::Seconds;

// One closing (two codes, as the program sends them) and one opening, each read back.
void GateChange(benchmark::State& state) {
  const std::string reason = lab::NetworkNamespace::WhyNot();
  if (!reason.empty()) return state.SkipWithError(reason.c_str());
  const lab::NetworkLab machines;
  std::vector<double> closings;
  std::vector<double> openings;
  machines.Host().Run([&] {
    lab::LoadedDriver driver;
    for (auto _ : state) {
      const auto start = Clock::now();
      const bool closed = driver.Control(lab::kAllowLocal) == 0 && driver.Control(lab::kBlock) == 0;
      const auto middle = Clock::now();
      const bool opened = driver.Control(lab::kPass) == 0;
      closings.push_back(Seconds(middle - start).count() * 1000);
      openings.push_back(Seconds(Clock::now() - middle).count() * 1000);
      if (!closed || !opened) return state.SkipWithError("the gate failed");
    }
  });
  state.counters["close_ms"] = Median(closings);
  state.counters["open_ms"] = Median(openings);
}
BENCHMARK(GateChange)->Iterations(300)->Unit(benchmark::kMillisecond);

double BytesPerSecond(int socket, Seconds duration) {
  std::vector<char> buffer(256 * 1024);
  std::uint64_t bytes = 0;
  const auto start = Clock::now();
  while (Clock::now() - start < duration) {
    const ssize_t size = ::recv(socket, buffer.data(), buffer.size(), 0);
    if (size <= 0) return 0;
    bytes += static_cast<std::uint64_t>(size);
  }
  return static_cast<double>(bytes) / Seconds(Clock::now() - start).count();
}

// The three states alternate, so that other load on the machine affects all of them alike.
void Throughput(benchmark::State& state) {
  const std::string reason = lab::NetworkNamespace::WhyNot();
  if (!reason.empty()) return state.SkipWithError(reason.c_str());
  const lab::NetworkLab machines;
  const lab::DownloadSource source(machines.Internet(), AF_INET, lab::kIp4.router);
  lab::DriverProcess driver(machines.Host());
  std::vector<double> without;
  std::vector<double> open;
  std::vector<double> closed;
  for (auto _ : state) {
    const auto download = lab::ConnectToDownload(machines.Host(), AF_INET, lab::kIp4.router);
    constexpr Seconds kSlice{0.2};
    machines.Host().Shell("nft flush ruleset");
    without.push_back(BytesPerSecond(download.Get(), kSlice));
    if (!driver.Close(false) || !driver.OpenGate()) return state.SkipWithError("the gate failed");
    open.push_back(BytesPerSecond(download.Get(), kSlice));
    if (!driver.Close(true)) return state.SkipWithError("the gate failed");
    closed.push_back(BytesPerSecond(download.Get(), kSlice));
    driver.OpenGate();
  }
  state.counters["open_ratio"] = Median(open) / Median(without);
  state.counters["local_while_closed_ratio"] = Median(closed) / Median(without);
  state.counters["MB_per_s"] = Median(without) / 1e6;
}
BENCHMARK(Throughput)->Iterations(15)->Unit(benchmark::kMillisecond);

}  // namespace
