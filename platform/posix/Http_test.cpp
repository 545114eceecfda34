#include "platform/Http.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>
#include <vector>

#include "platform/Files.h"
#include "platform/TemporaryFolder.h"
#include "platform/posix/FileDescriptor.h"

namespace tolvane::platform {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kEnough(20'000);
constexpr std::size_t kMaxBytes = 1000;

// A port of this machine where nothing but the test's own connections arrive.
class LoopbackPort {
 public:
  LoopbackPort() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (::bind(socket_.Get(), generic, size) != 0 || ::getsockname(socket_.Get(), generic, &size) != 0) {
      throw std::runtime_error("no loopback port");
    }
    url_ = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/";
  }

  int Socket() const { return socket_.Get(); }
  const std::string& Url() const { return url_; }

 private:
  FileDescriptor socket_;
  std::string url_;
};

// Gives the answers, one to each connection, and keeps what was asked. "{url}" in an answer is the server's address.
class Server {
 public:
  explicit Server(std::vector<std::string> answers) {
    if (::listen(port_.Socket(), 8) != 0) throw std::runtime_error("cannot listen");
    thread_ = std::thread([this, answers = std::move(answers)] { Serve(answers); });
  }
  ~Server() {
    // Wakes the thread where it waits for a connection that never came.
    ::shutdown(port_.Socket(), SHUT_RDWR);
    thread_.join();
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  const std::string& Url() const { return port_.Url(); }

 private:
  void Serve(const std::vector<std::string>& answers) const {
    for (std::string answer : answers) {
      const FileDescriptor connection(::accept4(port_.Socket(), nullptr, nullptr, SOCK_CLOEXEC));
      if (!connection.IsOpen()) return;
      std::string request;
      std::array<char, 1000> block;
      while (request.find("\r\n\r\n") == std::string::npos) {
        const ssize_t count = ::recv(connection.Get(), block.data(), block.size(), 0);
        if (count <= 0) break;
        request.append(block.data(), static_cast<std::size_t>(count));
      }
      if (const std::size_t at = answer.find("{url}"); at != std::string::npos) answer.replace(at, 5, Url());
      ::send(connection.Get(), answer.data(), answer.size(), MSG_NOSIGNAL);
    }
  }

  LoopbackPort port_;
  std::thread thread_;
};

std::string Answer(const std::string& status, const std::string& headers, const std::string& body) {
  return "HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers + "\r\n" + body;
}

class HttpGetTest : public testing::Test {
 protected:
  // A proxy that the environment names would stand between the test and its server.
  void SetUp() override { ::setenv("no_proxy", "127.0.0.1", 1); }
};

TEST_F(HttpGetTest, GivesTheBody) {
  const Server server({Answer("200 OK", "Content-Length: 6\r\n", std::string("a\0b\r\n\xFF", 6))});
  EXPECT_EQ(HttpGet(server.Url(), kEnough, kMaxBytes), std::string("a\0b\r\n\xFF", 6));
}

TEST_F(HttpGetTest, AnEmptyBodyIsNoFailure) {
  const Server server({Answer("204 No Content", "", "")});
  EXPECT_EQ(HttpGet(server.Url(), kEnough, 0), "");
}

TEST_F(HttpGetTest, FailsOnErrorStatus) {
  const Server server({Answer("404 Not Found", "", "gone"), Answer("500 Oops", "", "x"), Answer("304 Same", "", "")});
  for (int i = 0; i < 3; ++i) EXPECT_EQ(HttpGet(server.Url(), kEnough, kMaxBytes), std::nullopt);
}

TEST_F(HttpGetTest, LimitsTheSizeToldOrNot) {
  const std::string body(kMaxBytes, 'x');
  const Server server({Answer("200 OK", "", body), Answer("200 OK", "", body + "x"),
                       Answer("200 OK", "Content-Length: 1001\r\n", body + "x")});
  EXPECT_EQ(HttpGet(server.Url(), kEnough, kMaxBytes), body);
  EXPECT_EQ(HttpGet(server.Url(), kEnough, kMaxBytes), std::nullopt);
  EXPECT_EQ(HttpGet(server.Url(), kEnough, kMaxBytes), std::nullopt);
}

TEST_F(HttpGetTest, ABodyCutShortIsAFailure) {
  const Server server({Answer("200 OK", "Content-Length: 10\r\n", "half")});
  EXPECT_EQ(HttpGet(server.Url(), kEnough, kMaxBytes), std::nullopt);
}

TEST_F(HttpGetTest, FollowsRedirectionsWithinHttp) {
  const Server server({Answer("302 Found", "Location: {url}next\r\n", "elsewhere"), Answer("200 OK", "", "here")});
  EXPECT_EQ(HttpGet(server.Url(), kEnough, kMaxBytes), "here");
}

TEST_F(HttpGetTest, FollowsNoRedirectionToAnotherScheme) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.Path() / "secret";
  ReplaceFile(file, "secret");
  const Server server({Answer("302 Found", "Location: file://" + file.string() + "\r\n", "")});
  EXPECT_EQ(HttpGet(server.Url(), kEnough, kMaxBytes), std::nullopt);
}

TEST_F(HttpGetTest, FollowsRedirectionsInACircleNotForever) {
  const Server server(std::vector<std::string>(20, Answer("302 Found", "Location: {url}\r\n", "")));
  EXPECT_EQ(HttpGet(server.Url(), kEnough, kMaxBytes), std::nullopt);
}

TEST_F(HttpGetTest, EndsWhereNoAnswerComes) {
  // Connections to a port that listens are made by the system; nobody ever answers on this one.
  const LoopbackPort silent;
  ASSERT_EQ(::listen(silent.Socket(), 1), 0);
  EXPECT_EQ(HttpGet(silent.Url(), milliseconds(50), kMaxBytes), std::nullopt);
}

TEST_F(HttpGetTest, FailsWhereNobodyListens) {
  const LoopbackPort closed;
  EXPECT_EQ(HttpGet(closed.Url(), kEnough, kMaxBytes), std::nullopt);
}

TEST_F(HttpGetTest, RefusesOtherSchemesAndBrokenAddresses) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.Path() / "secret";
  ReplaceFile(file, "secret");
  for (const std::string& url :
       {"file://" + file.string(), file.string(), std::string("ftp://127.0.0.1/"), std::string("127.0.0.1"),
        std::string(), std::string("http://"), std::string("http:// /"), std::string("http://127.0.0.1:99999/")}) {
    EXPECT_EQ(HttpGet(url, kEnough, kMaxBytes), std::nullopt) << url;
  }
}

TEST_F(HttpGetTest, ReadsTheSchemeInAnyCaseAndTheWholeAddress) {
  const Server server({Answer("200 OK", "", "x"), Answer("200 OK", "", "y")});
  EXPECT_EQ(HttpGet("HTTP" + server.Url().substr(4), kEnough, kMaxBytes), "x");
  EXPECT_EQ(HttpGet(server.Url() + std::string("\0x", 2), kEnough, kMaxBytes), std::nullopt);
  EXPECT_EQ(HttpGet(server.Url(), milliseconds(0), kMaxBytes), std::nullopt);
  EXPECT_EQ(HttpGet(server.Url(), milliseconds(-1), kMaxBytes), std::nullopt);
}

}  // namespace
}  // namespace tolvane::platform
