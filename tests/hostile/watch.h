// SPDX-License-Identifier: Apache-2.0
//
// Sees whether a file was opened or a connection was made.
#ifndef QUENXML2_TESTS_HOSTILE_WATCH_H_
#define QUENXML2_TESTS_HOSTILE_WATCH_H_

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>

namespace quen::test {

// A file that nobody is to open.
class WatchedFile {
 public:
  explicit WatchedFile(const std::string& inPath)
      : descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (inotify_add_watch(descriptor_, inPath.c_str(), IN_OPEN | IN_ACCESS) < 0)
      throw std::runtime_error("the file can not be watched");
  }
  ~WatchedFile() { close(descriptor_); }
  WatchedFile(const WatchedFile&) = delete;
  WatchedFile& operator=(const WatchedFile&) = delete;

  // Since the last call.
  bool WasOpened() {
    char events[4096];
    bool any = false;
    while (read(descriptor_, events, sizeof events) > 0) any = true;
    return any;
  }

 private:
  const int descriptor_;
};

// A server on the loopback interface, which closes every connection at once and counts them.
class WatchedPort {
 public:
  WatchedPort() : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_, generic, size) != 0 || listen(listener_, 16) != 0 ||
        getsockname(listener_, generic, &size) != 0) {
      throw std::runtime_error("no port on the loopback interface");
    }
    place_ = address;
    address_ = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
    thread_ = std::thread([this] {
      for (int peer; (peer = accept(listener_, nullptr, nullptr)) >= 0; close(peer)) {
        const timeval patience{2, 0};
        setsockopt(peer, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        char first = 0;
        const bool isOwn = recv(peer, &first, 1, 0) == 1 && first == kOwn;
        ++(isOwn ? own_ : strangers_);
      }
    });
  }
  ~WatchedPort() {
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    close(listener_);
  }
  WatchedPort(const WatchedPort&) = delete;
  WatchedPort& operator=(const WatchedPort&) = delete;

  const std::string& Address() const { return address_; }
  // Connections of others so far. Makes one of its own, behind which all of them were counted.
  int Connections() {
    const int own = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(own, reinterpret_cast<sockaddr*>(&place_), sizeof place_) != 0)
      throw std::runtime_error("the server does not answer");
    const int before = own_;
    if (send(own, &kOwn, 1, MSG_NOSIGNAL) != 1) throw std::runtime_error("the server is deaf");
    while (own_ == before) usleep(1000);
    close(own);
    return strangers_;
  }

 private:
  const int listener_;
  std::string address_;
  sockaddr_in place_{};
  static constexpr char kOwn = 1;
  std::atomic<int> own_{0};
  std::atomic<int> strangers_{0};
  std::thread thread_;
};

}  // namespace quen::test

#endif  // QUENXML2_TESTS_HOSTILE_WATCH_H_
