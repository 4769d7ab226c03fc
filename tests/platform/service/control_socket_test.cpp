// The control socket against clients that mean harm: "NAME.sock" in the folder of the services,
// requests and replies as the constants below lay them out.
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>

#include "platform/service/service_fixture.h"

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
  void Send(const void* data, std::size_t bytes) const {
    ::send(socket_, data, bytes, MSG_NOSIGNAL);
  }
  // The size of what comes; 0 at the end, -1 when nothing comes in 10 s.
  ssize_t Receive(Reply& reply) const { return ::recv(socket_, &reply, sizeof reply, 0); }

 private:
  int socket_;
  bool connected_ = false;
};

class ControlSocket : public ServiceFixture {
 protected:
  void SetUp() override {
    ASSERT_TRUE(::StartServiceW(service_.Get(), 0, nullptr)) << ::GetLastError();
    ASSERT_TRUE(AwaitState(service_, SERVICE_RUNNING));
  }
  // Whether the service takes a control from an honest caller, and in which time.
  bool Answers(std::chrono::milliseconds limit) {
    const auto start = std::chrono::steady_clock::now();
    SERVICE_STATUS status{};
    return ::ControlService(service_.Get(), 130, &status) &&
           std::chrono::steady_clock::now() - start < limit;
  }

  static constexpr std::chrono::milliseconds kSoon{2500};
  ScHandle service_ = CreateTestService(L"sample", L"normal");
  const std::filesystem::path path_ = ServiceFile("sample.sock");
};

TEST_F(ControlSocket, MalformedMessagesAreRefusedAndHarmNothing) {
  const Request good;
  Request magic;
  magic.magic ^= 1;
  Request version;
  version.version = 2;
  std::string longer(reinterpret_cast<const char*>(&good), sizeof good);
  longer += 'x';
  const std::string messages[] = {
      {reinterpret_cast<const char*>(&magic), sizeof magic},
      {reinterpret_cast<const char*>(&version), sizeof version},
      {reinterpret_cast<const char*>(&good), sizeof good - 1},
      "x",
      longer,
      std::string(100'000, '\xFF'),
  };
  for (const std::string& message : messages) {
    const Client client(path_);
    ASSERT_TRUE(client.IsConnected());
    client.Send(message.data(), message.size());
    Reply reply{};
    ASSERT_EQ(client.Receive(reply), static_cast<ssize_t>(sizeof reply)) << message.size();
    EXPECT_EQ(reply.error, ERROR_INVALID_DATA) << message.size();
  }
  EXPECT_TRUE(Answers(kSoon));
}

TEST_F(ControlSocket, ARequestThatSkipsTheCallersChecksIsJudgedByTheService) {
  for (const std::uint32_t control : {0u, 5u, 127u, 256u, 0xFFFFFFFFu}) {
    Request request;
    request.control = control;
    const Client client(path_);
    client.Send(&request, sizeof request);
    Reply reply{};
    ASSERT_EQ(client.Receive(reply), static_cast<ssize_t>(sizeof reply)) << control;
    EXPECT_EQ(reply.error, ERROR_INVALID_PARAMETER) << control;
  }
}

TEST_F(ControlSocket, SilentClientsKeepNobodyWaitingAndAreDropped) {
  std::vector<std::unique_ptr<Client>> silent;
  for (int i = 0; i < 20; ++i)
    silent.push_back(std::make_unique<Client>(path_));
  EXPECT_TRUE(Answers(kSoon));
  Reply reply{};
  for (const auto& client : silent)
    EXPECT_EQ(client->Receive(reply), 0) << "not dropped";
}

TEST_F(ControlSocket, MoreSilentClientsThanItHoldsOnlyDelayTheHonestOne) {
  std::vector<std::unique_ptr<Client>> silent;
  for (int i = 0; i < 40; ++i)
    silent.push_back(std::make_unique<Client>(path_));
  EXPECT_TRUE(Answers(std::chrono::seconds(12)));
}

TEST_F(ControlSocket, AClientThatDoesNotWaitForItsReplyHarmsNothing) {
  for (int i = 0; i < 50; ++i) {
    Request request;
    request.control = 140;
    const Client client(path_);
    client.Send(&request, sizeof request);
  }
  EXPECT_TRUE(Answers(kSoon));
}

TEST_F(ControlSocket, TheSocketIsForItsOwnerAlone) {
  struct stat status {};
  ASSERT_EQ(::stat(path_.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777u, 0600u);
  ASSERT_EQ(::stat(path_.parent_path().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777u, 0700u);
}

// The modes of the files are opened wide first, so that only the peer's identity is left to judge.
TEST_F(ControlSocket, AnotherUserIsNotAnsweredEvenWhenTheFilesAreOpen) {
  if (::geteuid() != 0) GTEST_SKIP() << "needs root to become another user";
  for (auto folder = path_.parent_path(); folder != machine_.Root().parent_path();
       folder = folder.parent_path()) {
    ASSERT_EQ(::chmod(folder.c_str(), 0755), 0);
  }
  ASSERT_EQ(::chmod(path_.c_str(), 0666), 0);
  const pid_t other = ::fork();
  if (other == 0) {
    constexpr uid_t kNobody = 65534;
    if (::setresuid(kNobody, kNobody, kNobody) != 0) ::_exit(2);
    Request request;
    request.control = 150;
    const Client client(path_);
    if (!client.IsConnected()) ::_exit(3);
    client.Send(&request, sizeof request);
    Reply reply{};
    ::_exit(client.Receive(reply) > 0 ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(other, &status, 0), other);
  EXPECT_EQ(WEXITSTATUS(status), 0) << "1: answered; 2: still root; 3: not connected";
  EXPECT_NE(StatusOf(service_).dwWaitHint, 150u) << "carried out";
  EXPECT_TRUE(Answers(kSoon));
}

}  // namespace
