// Matrices in several threads: results as in a single thread, settings per thread, shared tables that are replaced meanwhile, and
// no open files after the end of a thread.
#include <gtest/gtest.h>
#include <zmatrix/zmatrix.h>
#include <zmatrix/zq.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <iterator>
#include <thread>
#include <vector>

#include "music/midi/ZQMidiEvent.h"
#include "support/TestFolder.h"
#include "threads/ThreadWork.h"

namespace {

constexpr int numberOfThreads = 8;

void inThreads(int count, const std::function<void(int)>& work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < count; i++) threads.emplace_back(work, i);
  for (std::thread& thread : threads) thread.join();
}

/// A thread that replaces the tables of primes until it is destroyed.
class ReplacingThread {
 public:
  explicit ReplacingThread(bool frees) : thread_([this, frees] { replace(frees); }) {}
  ~ReplacingThread() {
    isOver_ = true;
    thread_.join();
  }

 private:
  void replace(bool frees) {
    for (unsigned upperBound = 6000; !isOver_; upperBound = upperBound == 6000 ? 20000 : 6000) {
      int count = 0, maximum = 0;
      long long largeCount = 0;
      const int* primes = zq_initPrimes(0, upperBound, &count);
      EXPECT_EQ(primes[count - 1], upperBound == 6000 ? 5987 : 19997);
      EXPECT_NE(zq_getPrimeNumbers(&count, &maximum), nullptr);
      zq_initPrimesLarge(0, upperBound, &largeCount);
      if (frees) zq_deinitPrimes();
    }
  }

  std::atomic<bool> isOver_ = false;
  std::thread thread_;
};

TEST(ThreadsTest, GiveTheResultsOfASingleThread) {
  const zmatrix::TestFolder folder;
  const auto folderOf = [&folder](const char* run, int i) {
    const std::string name = folder.path() + "/" + run + std::to_string(i);
    std::filesystem::create_directory(name);
    return name;
  };
  zq_initFirstNPrimes(1000);
  std::vector<std::string> expected(numberOfThreads), found(numberOfThreads);
  for (int seed = 0; seed < numberOfThreads; seed++)
    std::thread([&, seed] { expected[seed] = zmatrix::workOfThread(seed, folderOf("alone", seed)); }).join();
  {
    const ReplacingThread one(false), other(false);
    inThreads(numberOfThreads, [&](int seed) { found[seed] = zmatrix::workOfThread(seed, folderOf("together", seed)); });
  }
  for (int seed = 0; seed < numberOfThreads; seed++) {
    EXPECT_GT(expected[seed].size(), 8000u);
    EXPECT_TRUE(found[seed] == expected[seed]) << seed;
    EXPECT_NE(expected[seed], expected[(seed + 1) % numberOfThreads]);
  }
}

TEST(ThreadsTest, ReadTheOldTableOrTheNewOneOrNone) {
  const ReplacingThread one(true), other(true);
  inThreads(4, [](int) {
    char ocron[] = "22^P22^*2*P";
    const std::string whole = ocron;
    int stackDepth = 0, logBase = 0;
    for (int n = 1; n < 3000; n++) {
      const int nth = zq_nthPrime(500 + n % 100), rank = zq_primePi(3571);
      EXPECT_TRUE(nth == -1 || zq_isPrime(nth) != 0) << nth;
      EXPECT_TRUE(rank == 500 || rank == -1) << rank;
      EXPECT_GE(zq_primePiLarge(3571), -1);
      EXPECT_EQ(zq_sigma(360), 1170);
      const long long value = zq_ocron4ToLogLongLong(ocron, static_cast<int>(whole.size()), &stackDepth, &logBase);
      EXPECT_TRUE(value > 1 || value == -4) << value;
      int count = 0, sigma = 0;
      EXPECT_EQ(zq_getPrimeFactors(5041, &count, &sigma, 0) != nullptr ? sigma : 5113, 1 + 71 + 5041);
    }
  });
}

TEST(ThreadsTest, KeepTheirSettingsToThemselves) {
  ZQMatrixBase* matrix = createAndInitMatrixBase();
  int heard = 0;
  zq_setMessageFunction([](int, const char*, void* count) { ++*static_cast<int*>(count); }, &heard);
  s_setMatrixDebugOn_Base(matrix, 9);
  zq_getGlobalGocronParameters()->ocronType = 6;
  zq_initMath();
  const auto complain = [] {
    zq_setGlobalGocronParametersToDefaults();
    gocronParametersTag parameters = *zq_getGlobalGocronParameters();
    parameters.ocronType = 99;
    zq_setGlobalGocronParameters(&parameters);
  };
  std::thread([&complain] {
    EXPECT_EQ(zq_getGlobalGocronParameters()->ocronType, 4);
    EXPECT_STREQ(zq_lastMessage(), "");
    complain();
    EXPECT_STREQ(zq_lastMessage(), "err: setGlobalGocronParameters: illegal type 99, set to default\n");
    deleteMatrixBase(createAndInitMatrixBase());  // which sets the level to 0
  }).join();
  EXPECT_EQ(heard, 0);
  EXPECT_EQ(zq_getGlobalGocronParameters()->ocronType, 6);
  const std::string before = zq_lastMessage();
  complain();
  EXPECT_EQ(heard, 1);
  EXPECT_NE(before, zq_lastMessage());
  zq_setMessageFunction(nullptr, nullptr);
  deleteMatrixBase(matrix);
}

TEST(ThreadsTest, CloseTheirDebugFilesAtTheEnd) {
  const zmatrix::TestFolder folder;
  const auto openFiles = [] {
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return std::distance(begin(entries), end(entries));
  };
  if (!std::filesystem::exists("/proc/self/fd")) GTEST_SKIP();
  const auto before = openFiles();
  const auto folderOf = [&folder](int i) { return folder.path() + "/" + std::to_string(i) + "/"; };
  std::vector<ZQMatrixBase*> matrices(numberOfThreads);
  inThreads(numberOfThreads, [&](int i) {
    std::filesystem::create_directory(folderOf(i));
    matrices[i] = createAndInitMatrixBaseWithDebugParameters(2, 1, folderOf(i).c_str());
  });
  EXPECT_EQ(openFiles(), before);
  for (int i = 0; i < numberOfThreads; i++) {
    EXPECT_NE(zmatrix::TestFolder::contentOf(folderOf(i) + "matrixDebug.txt"), "");
    deleteMatrixBase(matrices[i]);
  }
}

// Objects of one thread are released by others, while it runs and after its end.
TEST(ThreadsTest, ReleaseObjectsOfOtherThreads) {
  constexpr int count = 20000;
  std::vector<zmatrix::ZQMidiEvent*> events(count);
  const auto release = [&events](int from, int step) {
    for (int i = from; i < count; i += step) {
      EXPECT_EQ(events[i]->getTimeQuanta(), i);
      zmatrix::deleteZQMidiEvent(events[i]);
    }
  };
  std::thread([&] {
    for (int i = 0; i < count; i++) (events[i] = zmatrix::createZQMidiEvent())->setTimeQuanta(i);
    std::thread meanwhile([&] { release(0, 2); });
    for (int i = 0; i < count; i++) zmatrix::deleteZQMidiEvent(zmatrix::createZQMidiEvent());
    meanwhile.join();
    for (int i = 0; i < count; i += 2) (events[i] = zmatrix::createZQMidiEvent())->setTimeQuanta(i);
  }).join();
  inThreads(3, [&](int i) { release(i, 3); });
}

}  // namespace
