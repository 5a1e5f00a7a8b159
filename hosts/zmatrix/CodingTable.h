// Look-up in a table of codings, of which each has a name and a preprocessing type.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

/// Null if no coding has the value in this member.
template <class Coding, std::size_t size, class Member, class Value>
const Coding* findIn(const Coding (&codings)[size], Member Coding::*member, const Value& value) {
  const Coding* const found =
      std::find_if(std::begin(codings), std::end(codings), [&](const Coding& coding) { return value == coding.*member; });
  return found == std::end(codings) ? nullptr : found;
}

template <class Coding, std::size_t size>
std::vector<std::string> namesIn(const Coding (&codings)[size]) {
  std::vector<std::string> names;
  for (const Coding& coding : codings) names.emplace_back(coding.name);
  return names;
}
