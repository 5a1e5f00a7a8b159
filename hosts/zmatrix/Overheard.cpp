#include "Overheard.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <system_error>

namespace {

constexpr std::size_t mostKinds = 8;
constexpr std::size_t mostOfAKind = 3;
constexpr std::size_t longestMessage = 2048;  // more is nothing that the library says in one message

std::string shapeOf(const std::string& message) {
  std::string shape;
  for (const char character : message) {
    const bool isDigit = std::isdigit(static_cast<unsigned char>(character)) != 0;
    if (!isDigit) shape += character;
    if (isDigit && (shape.empty() || shape.back() != '#')) shape += '#';
  }
  return shape;
}

}  // namespace

Overheard::Overheard(bool wanted) {
  int ends[2];
  if (!wanted || pipe(ends) != 0) return;
  std::fflush(stdout);
  before_ = dup(STDOUT_FILENO);
  source_ = ends[0];
  try {
    listener_ = std::thread(&Overheard::listen, this);
    dup2(ends[1], STDOUT_FILENO);
  } catch (const std::system_error&) {
    // no thread to be had: the messages come out as ever
  }
  close(ends[1]);
}

void Overheard::end() {
  if (before_ < 0) return;
  std::fflush(stdout);
  dup2(before_, STDOUT_FILENO);  // with that the last writing end is closed, and the listener comes to its end
  close(before_);
  before_ = -1;
  if (listener_.joinable()) listener_.join();
  close(source_);
}

void Overheard::listen() {
  std::string message;
  char piece[16384];
  for (ssize_t length; (length = read(source_, piece, sizeof piece)) > 0;) {
    for (const char character : std::string(piece, static_cast<std::size_t>(length))) {
      if (character != '\n') message += character;
      if (character != '\n' && message.size() < longestMessage) continue;
      keep(message);
      message.clear();
    }
  }
  if (!message.empty()) keep(message);
}

void Overheard::keep(const std::string& message) {
  if (message.empty()) return;
  const std::string shape = shapeOf(message);
  auto kind = std::find_if(kinds_.begin(), kinds_.end(), [&](const Kind& known) { return known.shape == shape; });
  if (kind == kinds_.end() && kinds_.size() < mostKinds) kind = kinds_.insert(kind, Kind{shape, {}, 0});
  if (kind == kinds_.end()) --kind;
  ++kind->count;
  if (kind->first.size() < mostOfAKind) kind->first.push_back(message);
}

void Overheard::tell() const {
  for (const Kind& kind : kinds_) {
    for (const std::string& message : kind.first) std::fprintf(stderr, "%s\n", message.c_str());
    const long long more = kind.count - static_cast<long long>(kind.first.size());
    if (more > 0) std::fprintf(stderr, "(and %lld more like it)\n", more);
  }
}
