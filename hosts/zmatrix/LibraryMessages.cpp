#include "LibraryMessages.h"

#include <zmatrix/zq.h>

#include <algorithm>
#include <cctype>
#include <new>

#include "Messages.h"

namespace {

constexpr std::size_t mostKinds = 8;
constexpr std::size_t mostOfAKind = 3;

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

LibraryMessages::LibraryMessages(bool wanted) : listens_(wanted) {
  if (listens_) zq_setMessageFunction(receive, this);
}

void LibraryMessages::end() {
  if (listens_) zq_setMessageFunction(nullptr, nullptr);
  listens_ = false;
}

// The library's callback, so nothing may be thrown. A message is dropped if memory runs out.
void LibraryMessages::receive(int, const char* text, void* libraryMessages) {
  try {
    std::string message = text;
    message.erase(message.find_last_not_of("\r\n") + 1);
    std::replace(message.begin(), message.end(), '\n', ' ');
    static_cast<LibraryMessages*>(libraryMessages)->keep(message);
  } catch (const std::bad_alloc&) {
  }
}

void LibraryMessages::keep(const std::string& message) {
  if (message.empty()) return;
  const std::string shape = shapeOf(message);
  auto kind = std::find_if(kinds_.begin(), kinds_.end(), [&](const Kind& known) { return known.shape == shape; });
  if (kind == kinds_.end() && kinds_.size() < mostKinds) kind = kinds_.insert(kind, Kind{shape, {}, 0});
  if (kind == kinds_.end()) --kind;
  ++kind->count;
  if (kind->first.size() < mostOfAKind) kind->first.push_back(message);
}

void LibraryMessages::print() const {
  if (!isVerbose()) return;
  for (const Kind& kind : kinds_) {
    for (const std::string& message : kind.first) say("library: " + message);
    const long long more = kind.count - static_cast<long long>(kind.first.size());
    if (more > 0) say("(and " + std::to_string(more) + " similar messages)");
  }
}
