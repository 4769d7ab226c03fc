// Two hundred SIGKILLs at random moments, half of them while sessions are measured and logged, half
// while the user table is being replaced. The victims are processes of this executable; what they
// had reported as done when they died must be in the database, which the stock sqlite3 reads.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "lab/conversation.h"
#include "lab/network_lab.h"
#include "system/installed_service.h"
#include "system/kill_victim.h"

namespace {

constexpr int kKills = 100;  // of each kind
constexpr int kUsers = 25;

using Row = std::vector<std::string>;

std::vector<Row> Sql(const std::filesystem::path& database, const std::string& sql) {
  const std::string command =
      "sqlite3 -cmd '.timeout 5000' '" + database.string() + "' \"" + sql + "\" 2>&1";
  FILE* const pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("popen");
  std::string output;
  std::array<char, 4096> buffer;
  while (std::fgets(buffer.data(), static_cast<int>(buffer.size()), pipe) != nullptr)
    output += buffer.data();
  if (::pclose(pipe) != 0) throw std::runtime_error(output);
  std::vector<Row> rows;
  std::istringstream lines(output);
  for (std::string line; std::getline(lines, line);) {
    Row row;
    std::istringstream cells(line);
    for (std::string cell; std::getline(cells, cell, '|');)
      row.push_back(cell);
    rows.push_back(row);
  }
  return rows;
}

class Kills : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (std::filesystem::temp_directory_path() / "kills-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
    database_ = folder_ / "quillgate.dat";
    const unsigned seed = std::random_device()();
    RecordProperty("seed", static_cast<int>(seed));
    std::printf("seed %u\n", seed);
    random_.seed(seed);
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  // Runs a victim, kills it some time after its first report and answers all its reports.
  std::vector<Row> KillOne(const char* kind, int round) {
    const std::filesystem::path reports = folder_ / "reports";
    std::filesystem::remove(reports);
    const pid_t victim = ::fork();
    if (victim == 0) {
      ::setenv("TMPDIR", folder_.c_str(), 1);
      ::execl("/proc/self/exe", "victim", quillgate::kVictimWord, kind, database_.c_str(),
              reports.c_str(), std::to_string(round).c_str(), nullptr);
      ::_exit(127);
    }
    AwaitFirstReport(reports, victim);
    std::uniform_int_distribution<int> microseconds(0, 40'000);
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random_)));
    ::kill(victim, SIGKILL);
    int status = 0;
    ::waitpid(victim, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself";
    return ReadReports(reports);
  }

  void ExpectIntegrity() {
    EXPECT_EQ(Sql(database_, "PRAGMA integrity_check;"), (std::vector<Row>{{"ok"}}));
  }

  std::filesystem::path folder_;
  std::filesystem::path database_;
  std::mt19937 random_;

 private:
  static void AwaitFirstReport(const std::filesystem::path& reports, pid_t victim) {
    std::error_code error;
    for (int i = 0; i < 20'000; ++i) {
      const auto size = std::filesystem::file_size(reports, error);
      if (!error && size > 0) return;
      if (::waitpid(victim, nullptr, WNOHANG) != 0) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    FAIL() << "the victim reported nothing";
  }

  // A report that was cut off was not made.
  static std::vector<Row> ReadReports(const std::filesystem::path& file) {
    std::ifstream in(file);
    std::vector<Row> reports;
    for (std::string line; std::getline(in, line) && !in.eof();) {
      Row words;
      std::istringstream text(line);
      for (std::string word; std::getline(text, word, '|');)
        words.push_back(word);
      reports.push_back(words);
    }
    return reports;
  }
};

// What the database holds of one session.
struct Logged {
  int rows = 0;
  long seconds = 0;
  bool finished = false;
};

std::map<std::string, Logged> ReadSessions(const std::filesystem::path& database) {
  std::map<std::string, Logged> sessions;
  const auto rows = Sql(database,
                        "SELECT StartDate, Seconds, 1 FROM ConnLog UNION ALL "
                        "SELECT StartDate, Seconds, 0 FROM CrashLog;");
  for (const Row& row : rows) {
    Logged& session = sessions[row.at(0)];
    ++session.rows;
    session.seconds = std::stol(row.at(1));
    session.finished = row.at(2) == "1";
  }
  return sessions;
}

TEST_F(Kills, NoSessionIsLostBeyondItsLastCycle) {
  std::map<std::string, long> reported;  // the least that must be there, by start date
  std::map<std::string, long> ended;
  for (int round = 0; round < kKills && !HasFailure(); ++round) {
    for (const Row& report : KillOne("sessions", round)) {
      const long seconds = std::stol(report.at(2));
      reported[report.at(1)] = seconds;
      if (report.at(0) == "ended") ended[report.at(1)] = seconds;
    }
    ExpectIntegrity();
    const auto sessions = ReadSessions(database_);
    for (const auto& [start, seconds] : reported) {
      const auto found = sessions.find(start);
      ASSERT_NE(found, sessions.end()) << "session of " << start << " is lost, round " << round;
      EXPECT_EQ(found->second.rows, 1) << start;
      EXPECT_GE(found->second.seconds, seconds) << start;
    }
    for (const auto& [start, seconds] : ended) {
      EXPECT_TRUE(sessions.at(start).finished) << start;
      EXPECT_EQ(sessions.at(start).seconds, seconds) << start;
    }
  }
  EXPECT_GT(ended.size(), 0u) << "no session came to its end, so half of the test saw nothing";
}

// Before the service knows the user it lets everything pass, at every one of its starts.
TEST(KillsWhileStarting, LetNothingThroughAGateThatWasClosed) {
  const std::string whyNot = lab::NetworkNamespace::WhyNot();
  if (!whyNot.empty()) GTEST_SKIP() << whyNot;
  lab::NetworkLab machines;
  service::InstalledService service(machines.Host());
  constexpr char kBlocked[] = "You are not allowed to connect at this hour.";
  service.LogOnToSystem({.name = "anna", .allowedAtAnyHour = false});
  lab::Conversation talk(lab::Protocol::kUdp, AF_INET, {&machines.Host(), lab::kIp4.hostOutside},
                         {&machines.Internet(), lab::kIp4.server});
  ASSERT_TRUE(talk.Establish());
  const auto arrived = [&] {
    return machines.AtInternet().Count({.destination = lab::kIp4.server});
  };
  ASSERT_TRUE(service.Start(kBlocked));
  machines.Forget();
  std::atomic<long> sent{0};
  const std::jthread sender([&](const std::stop_token& stop) {
    for (; !stop.stop_requested(); ++sent) {
      talk.SendForth();
      std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
  });
  std::mt19937 random{std::random_device()()};
  std::uniform_int_distribution<int> microseconds(0, 200'000);
  for (int start = 0; start < 10; ++start) {
    service.Kill();
    for (int kill = 0; kill < 2; ++kill)
      service.KillWhileStarting(std::chrono::microseconds(microseconds(random)));
    ASSERT_TRUE(service.Start(kBlocked));
  }
  EXPECT_GT(sent, 1000);
  machines.Settle();
  EXPECT_EQ(arrived(), 0u);
  service.Kill();
  service.LogOnToSystem({.name = "anna", .allowedAtAnyHour = true});
  ASSERT_TRUE(service.Start("Internet connection enabled"));
  for (int i = 0; i < 1000 && arrived() == 0; ++i)
    machines.Settle();
  EXPECT_GT(arrived(), 0u) << "the decision opens it";
}

TEST_F(Kills, NoUserIsLostWhileTheTableIsReplaced) {
  long last = 0;
  for (int round = 0; round < kKills && !HasFailure(); ++round) {
    for (const Row& report : KillOne("users", round))
      last = std::stol(report.at(1));
    ExpectIntegrity();
    // Every user carries the number of the save that wrote it.
    const auto rows = Sql(database_,
                          "SELECT COUNT(*), MIN(CAST(TimeLimit AS INTEGER)), "
                          "MAX(CAST(TimeLimit AS INTEGER)) FROM Users_Windows;");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].at(0), std::to_string(kUsers));
    EXPECT_EQ(rows[0].at(1), rows[0].at(2)) << "a mixture of two tables";
    EXPECT_GE(std::stol(rows[0].at(1)), last) << "a reported save is gone";
    EXPECT_LE(std::stol(rows[0].at(1)), last + 1);
  }
  EXPECT_GT(last, kKills) << "the victims hardly saved anything";
}

}  // namespace
