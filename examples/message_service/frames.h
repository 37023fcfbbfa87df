// SPDX-License-Identifier: Apache-2.0
//
// Messages on a stream: four bytes of length, the highest first, then that many bytes of text.
#ifndef EXAMPLES_MESSAGE_SERVICE_FRAMES_H_
#define EXAMPLES_MESSAGE_SERVICE_FRAMES_H_

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <stdexcept>
#include <string>

// No length is believed beyond this.
constexpr std::size_t kMaxFrame = 1024 * 1024;

// False at the end of the stream.
inline bool ReadAll(int inFile, char* outBytes, std::size_t inCount) {
  while (inCount > 0) {
    const ssize_t count = read(inFile, outBytes, inCount);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw std::runtime_error("the stream cannot be read");
    if (count == 0) return false;
    outBytes += count;
    inCount -= static_cast<std::size_t>(count);
  }
  return true;
}

inline void WriteAll(int inFile, const char* inBytes, std::size_t inCount) {
  while (inCount > 0) {
    const ssize_t count = write(inFile, inBytes, inCount);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) throw std::runtime_error("the stream cannot be written");
    inBytes += count;
    inCount -= static_cast<std::size_t>(count);
  }
}

// False at the end of the stream.
inline bool ReadFrame(int inFile, std::string& outText) {
  unsigned char head[4];
  if (!ReadAll(inFile, reinterpret_cast<char*>(head), sizeof head)) return false;
  const std::size_t length = std::size_t{head[0]} << 24 | std::size_t{head[1]} << 16 |
                             std::size_t{head[2]} << 8 | std::size_t{head[3]};
  if (length > kMaxFrame) throw std::length_error("the message is too long");
  outText.resize(length);
  if (!ReadAll(inFile, outText.data(), length)) throw std::runtime_error("the message is cut off");
  return true;
}

inline void WriteFrame(int inFile, const std::string& inText) {
  const std::size_t length = inText.size();
  const char head[4] = {static_cast<char>(length >> 24), static_cast<char>(length >> 16),
                        static_cast<char>(length >> 8), static_cast<char>(length)};
  WriteAll(inFile, head, sizeof head);
  WriteAll(inFile, inText.data(), length);
}

#endif  // EXAMPLES_MESSAGE_SERVICE_FRAMES_H_
