// The control socket against clients that mean harm: "NAME.sock" in the folder of the services,
// requests and replies as the constants below lay them out.
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <deque>

#include "platform/service/layer/service_fixture.h"

namespace {

struct Request {
  std::uint32_t magic = 0x4C525443;
  std::uint32_t version = 1;
  std::uint32_t control = 0;
};
struct Reply {
  std::uint32_t magic;
  std::uint32_t version;
  std::uint32_t error;
  SERVICE_STATUS status;
};

class Client {
 public:
  explicit Client(const std::filesystem::path& path)
      : socket_(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::ranges::copy(path.native(), address.sun_path);
    connected_ = ::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    const timeval limit{.tv_sec = 10, .tv_usec = 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  }
  ~Client() { ::close(socket_); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  bool IsConnected() const { return connected_; }
  void Send(std::string_view message) const {
    ::send(socket_, message.data(), message.size(), MSG_NOSIGNAL);
  }
  // The size of what comes; 0 at the end, -1 when nothing comes in 10 s.
  ssize_t Receive(Reply& reply) const { return ::recv(socket_, &reply, sizeof reply, 0); }

 private:
  int socket_;
  bool connected_ = false;
};

std::string Bytes(const Request& request) {
  return {reinterpret_cast<const char*>(&request), sizeof request};
}

class ControlSocket : public ServiceFixture {
 protected:
  // Whether the service takes a control from an honest caller, and in which time.
  bool Answers(std::chrono::milliseconds limit) {
    const auto start = std::chrono::steady_clock::now();
    return Control(service_, 130) == NO_ERROR && std::chrono::steady_clock::now() - start < limit;
  }

  static constexpr std::chrono::milliseconds kSoon{2500};
  const ScHandle service_ = RunTestService(L"sample", L"normal");
  const std::filesystem::path path_ = ServiceFile("sample.sock");
};

TEST_F(ControlSocket, MalformedOrUnknownRequestsAreRefusedAndHarmNothing) {
  const std::string good = Bytes({});
  const std::pair<std::string, DWORD> cases[] = {
      {Bytes({.magic = 0x4C525442}), ERROR_INVALID_DATA},
      {Bytes({.version = 2}), ERROR_INVALID_DATA},
      {good.substr(1), ERROR_INVALID_DATA},
      {good.substr(0, good.size() - 1), ERROR_INVALID_DATA},
      {good + 'x', ERROR_INVALID_DATA},
      {"x", ERROR_INVALID_DATA},
      {std::string(100'000, '\xFF'), ERROR_INVALID_DATA},
      // Controls that skip the caller's checks.
      {Bytes({.control = 0}), ERROR_INVALID_PARAMETER},
      {Bytes({.control = 5}), ERROR_INVALID_PARAMETER},
      {Bytes({.control = 127}), ERROR_INVALID_PARAMETER},
      {Bytes({.control = 256}), ERROR_INVALID_PARAMETER},
      {Bytes({.control = 0xFFFFFFFF}), ERROR_INVALID_PARAMETER},
  };
  for (const auto& [message, error] : cases) {
    const Client client(path_);
    ASSERT_TRUE(client.IsConnected());
    client.Send(message);
    Reply reply{};
    ASSERT_EQ(client.Receive(reply), static_cast<ssize_t>(sizeof reply));
    EXPECT_EQ(reply.error, error) << message.size();
  }
  EXPECT_TRUE(Answers(kSoon));
}

TEST_F(ControlSocket, SilentClientsOnlyDelayTheHonestOneAndAreDropped) {
  using std::chrono::seconds;
  // The service holds fewer than the second number.
  for (const auto& [count, limit] : {std::pair(20, kSoon), std::pair(40, kSoon + seconds(10))}) {
    std::deque<Client> silent;
    for (int i = 0; i < count; ++i)
      silent.emplace_back(path_);
    EXPECT_TRUE(Answers(limit)) << count;
    Reply reply{};
    for (const Client& client : silent)
      EXPECT_EQ(client.Receive(reply), 0) << "not dropped";
  }
}

TEST_F(ControlSocket, AClientThatDoesNotWaitForItsReplyHarmsNothing) {
  for (int i = 0; i < 50; ++i)
    Client(path_).Send(Bytes({.control = 140}));
  EXPECT_TRUE(Answers(kSoon));
}

TEST_F(ControlSocket, IsForItsOwnerAloneEvenWhenTheFilesAreOpen) {
  using std::filesystem::perms;
  EXPECT_EQ(std::filesystem::status(path_).permissions(), perms::owner_read | perms::owner_write);
  EXPECT_EQ(std::filesystem::status(path_.parent_path()).permissions(), perms::owner_all);

  if (::geteuid() != 0) GTEST_SKIP() << "needs root to become another user";
  // The modes are opened wide, so that only the peer's identity is left to judge.
  for (auto folder = path_.parent_path(); folder != machine_.Root().parent_path();
       folder = folder.parent_path()) {
    ASSERT_EQ(::chmod(folder.c_str(), 0755), 0);
  }
  ASSERT_EQ(::chmod(path_.c_str(), 0666), 0);
  const auto ask = [this] {
    constexpr uid_t kNobody = 65534;
    if (::setresuid(kNobody, kNobody, kNobody) != 0) ::_exit(2);
    const Client client(path_);
    if (!client.IsConnected()) ::_exit(3);
    client.Send(Bytes({.control = 150}));
    Reply reply{};
    ::_exit(client.Receive(reply) > 0 ? 1 : 0);
  };
  EXPECT_EXIT(ask(), testing::ExitedWithCode(0), "") << "1: answered, 2: root, 3: not connected";
  EXPECT_NE(StatusOf(service_).dwWaitHint, 150u) << "carried out";
  EXPECT_TRUE(Answers(kSoon));
}

}  // namespace
