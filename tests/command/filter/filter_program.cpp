// A program for filters to run: it does one of the things that commands between two pipes do, well or badly.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>

#include "support/binary_streams.h"

namespace {

constexpr std::size_t kBlock = 64 * 1024;

void Write(std::FILE* stream, std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fflush(stream);
}

void WriteMany(std::FILE* stream, unsigned long long bytes) {
  const std::string block(kBlock, 'x');
  for (; bytes > 0; bytes -= std::min<unsigned long long>(bytes, kBlock)) {
    const auto count = static_cast<std::size_t>(std::min<unsigned long long>(bytes, kBlock));
    if (std::fwrite(block.data(), 1, count, stream) != count) return;
  }
  std::fflush(stream);
}

void Copy() {
  std::string block(kBlock, '\0');
  while (const std::size_t count = std::fread(block.data(), 1, block.size(), stdin)) {
    std::fwrite(block.data(), 1, count, stdout);
  }
  std::fflush(stdout);
}

/// Text in which +XX is the byte of that number: not every shell hands on every character.
std::string Unescaped(std::string_view text) {
  std::string bytes;
  for (std::size_t index = 0; index < text.size(); ++index) {
    if (text[index] == '+') {
      bytes += static_cast<char>(std::stoi(std::string(text.substr(index + 1, 2)), nullptr, 16));
      index += 2;
    } else {
      bytes += text[index];
    }
  }
  return bytes;
}

/// Does what the arguments from `first` on say: DOING VALUE, pair by pair.
int Do(char** first, char** last) {
  for (; last - first >= 2; first += 2) {
    const std::string_view doing = first[0];
    const std::string value = first[1];
    if (doing == "copy") Copy();
    if (doing == "say") Write(stdout, Unescaped(value));
    if (doing == "complain") Write(stderr, Unescaped(value));
    if (doing == "write") WriteMany(stdout, std::stoull(value));
    if (doing == "err") WriteMany(stderr, std::stoull(value));
    if (doing == "sleep") std::this_thread::sleep_for(std::chrono::seconds(std::stoi(value)));
    if (doing == "exit") return std::stoi(value);
    if (doing == "variable") {
      const char* const text = std::getenv(value.c_str());
      Write(stdout, text == nullptr ? "(none)" : text);
    }
    if (doing == "drip") {
      for (;;) {
        Write(stdout, value);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      }
    }
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  ondrel::test::UseBinaryStreams();
  return Do(argv + 1, argv + argc);
}
