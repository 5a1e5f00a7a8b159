// The benchmarks by group. A row's name is group/limit:L/size:N/contender; times of its second step stand in counters.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

#include "Measurement.h"

namespace bench {

/// Learning, and learning the same again, of text at several sizes and of triples of integers.
void registerLearning(const std::string& text);
/// Learning the words of a text, beside a chain of words.
void registerWords(const std::string& text);
/// Items a second from a matrix that has learned text.
void registerGeneration(const std::string& text);
/// A text to 10,000 items, beside what users know.
void registerPeers(const std::string& text);
/// Write, read and delete of single vectors in random order.
void registerRandomAccess();
/// Single vectors in wide fields, and text without structure.
void registerWideFields();
/// Test, prune, save and load.
void registerUpkeep(const std::string& text);
/// Tables and ranks of primes, integers to ocrons.
void registerNumbers();
/// Reading, writing and learning music: of a large file made here, and of the MIDI files of a folder unless that is empty.
void registerMusic(const std::string& folder);
/// Reading and learning kern: of scores made here, and of the files of a folder unless that is empty.
void registerKern(const std::string& folder);
/// A block filled to its cap.
void registerCapacity();

/// Hands a measurement to the row; one that is not right makes the row fail.
inline void report(benchmark::State& state, const Measurement& measured, double seconds) {
  state.SetIterationTime(seconds > 0 ? seconds : 1e-9);
  const auto operations = static_cast<double>(measured.operations > 0 ? measured.operations : 1);
  state.counters["ns"] = seconds * 1e9 / operations;
  state.counters["operations"] = operations;
  if (!measured.isRight) state.SkipWithError("the answers are wrong");
}

}  // namespace bench
