// Integers as ocrons and back, sequences of ocrons, and files of them.
#include <array>
#include <climits>
#include <cstring>
#include <sstream>

#include "NumbersFixture.h"
#include "numbers/ZQOcronBuffers.h"
#include "numbers/ZQOcronEncoder.h"
#include "numbers/ZQOcronSequence.h"
#include "support/TestFolder.h"

using zmatrix::systemMalloc;

namespace {

class OcronEncoderTest : public zmatrix::NumbersFixture {
 public:
  std::string ocron(int type, int number) {
    return textOf(zmatrix::intToOcron(type, &length, &capacity, number, &compareNumber, &stackDepth));
  }
  /// Calls the encoder of a type with `before` in the buffer.
  template <class Encoder>
  std::string appended(Encoder encoder, const std::string& before, int number) {
    length = static_cast<int>(before.size());
    capacity = 16;
    auto* buffer = static_cast<char*>(systemMalloc(17));
    strcpy(buffer, before.c_str());
    return textOf(encoder(buffer, &length, &capacity, number));
  }
  zmatrix::Vector sequence(int type, const zmatrix::Vector& numbers, int endSymbol, const std::string& log = "") {
    int* items = zmatrix::createOcronSequenceFromIntegerSequence(numbers.data(), static_cast<int>(numbers.size()), type, &length,
                                                                 endSymbol, log.empty() ? nullptr : log.c_str());
    return zmatrix::taken(items, length);
  }

  int length = 0, capacity = 0, compareNumber = 0, stackDepth = 0;
  zmatrix::TestFolder folder;
};

TEST_F(OcronEncoderTest, EncodesNumbers) {
  const std::vector<std::pair<int, std::vector<std::string>>> known = {
      {2, {"2", "2", "2", "P", "2"}},
      {4, {"22*", "22^", "22^", "P*", "22^"}},
      {5, {"2PP", "2PP", "22Q", "PPP", "2PP"}},
      {7, {"22*P", "22^P", "22^P", "P*P", "22^P"}},
      {11, {"2PPP", "2PPP", "22PQ", "PPPP", "2PPP"}},
      {12, {"2P2*2*", "2P22^*", "2P22^*", "P*P*", "2P22^*"}},
  };
  for (const auto& [number, ocrons] : known)
    for (int type = 3; type <= 7; type++) EXPECT_EQ(ocron(type, number), ocrons[static_cast<size_t>(type - 3)]) << number;
  EXPECT_EQ(ocron(6, 1), "*");
}

TEST_F(OcronEncoderTest, EncodesEveryNumberReversibly) {
  for (int type = 3; type <= 7; type++)
    for (int number = type == 6 ? 1 : 2; number < 6000; number++) {
      const std::string text = ocron(type, number);
      ASSERT_EQ(compareNumber, number) << type;
      ASSERT_EQ(static_cast<size_t>(length), text.size());
    }
}

TEST_F(OcronEncoderTest, RefusesNumbersWithoutOcron) {
  for (int type : {INT_MIN, 0, 2, 8, 12}) EXPECT_EQ(ocron(type, 7), "(null)");
  for (int number : {INT_MIN, -1, 0})
    for (int type = 3; type <= 7; type++) EXPECT_EQ(ocron(type, number), "(null)");
  EXPECT_EQ(ocron(4, 1), "(null)");
  // The rank of a factor beyond the table is estimated, so the comparison fails.
  EXPECT_NE(ocron(4, 1000003), "(null)");
  EXPECT_EQ(compareNumber, -6);
  messages.take();
  EXPECT_EQ(ocron(6, 1000003), "");
  EXPECT_EQ(messages.take(), "err intToOcron6(): isPrime() failed with negative value\n");
  zmatrix::getGlobalGocronParameters()->ocronAlgorithm = 1;
  EXPECT_EQ(ocron(4, 7), "(null)");
  EXPECT_EQ(messages.take(), "err intToOcron(): sorry, currently only ocron algorithm 0 (recursive) is implemented\n");
  zmatrix::setGlobalGocronParametersToDefaults();
  // With a table without 2 the steps down to 1 would never end.
  zmatrix::initPrimes(4000, 5000, &count);
  EXPECT_EQ(appended(zmatrix::intToOcron6, "", 100), "");
  zmatrix::deinitPrimes();
  EXPECT_EQ(ocron(4, 12), "");
}

TEST_F(OcronEncoderTest, AppendsToTheBuffer) {
  EXPECT_EQ(appended(zmatrix::intToOcron3, "2P", 12), "2P2P*2*2*");
  EXPECT_EQ(appended(zmatrix::intToOcron4, "2P", 12), "2P2P*22^*");
  EXPECT_EQ(appended(zmatrix::intToOcron5, "PP", 5), "2Q22Q*");  // the run in the buffer is rewritten too
  EXPECT_EQ(appended(zmatrix::intToOcron6, "*", 4), "*P*");      // no * for 1
  for (int number : {-5, 0, 1}) EXPECT_EQ(appended(zmatrix::intToOcron4, "2P", number), "2P");
  EXPECT_EQ(appended(zmatrix::intToOcron6, "2", 1), "2");
  char* buffer = static_cast<char*>(systemMalloc(2));
  length = 0;
  capacity = 1;
  for (int i = 0; i < 40; i++) buffer = zmatrix::addOcronItem(buffer, &length, &capacity, 'P');
  EXPECT_EQ(textOf(buffer), std::string(40, 'P'));
}

TEST_F(OcronEncoderTest, EncodesSequences) {
  EXPECT_EQ(sequence(4, {2, 3}, 10), (zmatrix::Vector{'2', 10, '2', 'P', 10}));
  messages.take();
  const std::string log = folder.path() + "/log";
  EXPECT_EQ(sequence(4, {2, 1, 1000003, 3}, 0, log), (zmatrix::Vector{'2', '2', 'P'}));
  const std::string printed = messages.take();
  for (const char* line :
       {"ocronType: 4\n", "Error from getOcronSequenceFromIntegerSequence: illegal number (1)!\n",
        "Error from getOcronSequenceFromIntegerSequence: number (1000003)!= compareNumber (-6)\n", "maximal ocronStack: 1\n"})
    EXPECT_NE(printed.find(line), std::string::npos) << printed;
  EXPECT_EQ(folder.contentOf(log), "ocron4:  4tems\n2:\t\t1\t2\n3:\t\t2\t2P\n");
  EXPECT_EQ(sequence(4, {2}, 0, folder.path()), zmatrix::Vector{'2'});  // the log can't be opened
  EXPECT_EQ(sequence(9, {2}, 10), zmatrix::Vector{});
  zmatrix::largestAllocation = 600;  // room for some items: the last number is left out completely
  zmatrix::Vector numbers(80, 3);
  EXPECT_EQ(sequence(4, numbers, 10).size() % 3, 0u);
  EXPECT_NE(messages.take().find("addIntegerItemToOcronVector: realloc failed, not enough memory...\n"), std::string::npos);
}

TEST_F(OcronEncoderTest, ReadsStringsAndFiles) {
  const zmatrix::Vector items = {'2', 'P', 10, 'P'};
  EXPECT_EQ(textOf(zmatrix::getOcronStringFromOcronIntArray(items.data(), 10, &length)), "2P\n");
  EXPECT_EQ(length, 3);  // with the end symbol
  const zmatrix::Vector endless(40000, 'P');
  EXPECT_EQ(zmatrix::getOcronStringFromOcronIntArray(endless.data(), 10, &length), nullptr);
  EXPECT_EQ(zmatrix::getOcronStringFromOcronIntArray(items.data(), 2, 10, &length), nullptr);

  int status = 0;
  const auto read = [&](const std::string& path, int most, int endSymbol) {
    return zmatrix::taken(zmatrix::readIntegerSequenceFromASCIOcronFile(path.c_str(), most, endSymbol, &length, &status), length);
  };
  const std::string path = folder.put("ocrons", " \n2P  \t2Q\n");
  EXPECT_EQ(read(path, 0, 10), (zmatrix::Vector{'2', 'P', 10, '2', 'Q', 10}));
  EXPECT_EQ(read(path, 0, 0), (zmatrix::Vector{'2', 'P', '2', 'Q'}));
  EXPECT_EQ(read(path, 3, 10), (zmatrix::Vector{'2', 'P', 10}));
  EXPECT_EQ(status, 1);
  EXPECT_EQ(read(folder.put("other", "2Px2"), INT_MAX, 10), (zmatrix::Vector{'2', 'P', 'x'}));
  EXPECT_EQ(status, 0);
  const std::pair<std::string, int> unreadable[] = {
      {folder.path(), -1}, {folder.path() + "/none", -1}, {folder.put("blank", " \n"), -3}};
  for (const auto& [name, code] : unreadable) {
    EXPECT_EQ(read(name, 0, 10), zmatrix::Vector{});
    EXPECT_EQ(status, code);
  }
  EXPECT_EQ(read(path, -1, 10), zmatrix::Vector{});
  EXPECT_EQ(status, -2);
}

TEST_F(OcronEncoderTest, ReplacesWrongParametersByDefaults) {
  zmatrix::setGlobalGocronParameters(std::array<gocronParametersTag, 1>{{{-1, 7, 11, 12, 257, 9, 8, 7, 6, 5}}}.data());
  EXPECT_EQ(messages.take(),
            "err: setGlobalGocronParameters: illegal type -1, set to default\n"
            "err: setGlobalGocronParameters: illegal ocron algorithm 11, set to default\n"
            "err: setGlobalGocronParameters: illegal gocron algorithm 12, set to default\n"
            "err: setGlobalGocronParameters: illegal gocron number base 257, set to default\n");
  const gocronParametersTag& set = *zmatrix::getGlobalGocronParameters();
  EXPECT_EQ((zmatrix::Vector{set.ocronType, set.ocronEndSymbol, set.ocronAlgorithm, set.gocronAlgorithm, set.gocronNumberBase,
                             set.gocronASTERISKValue, set.gocronQValue}),
            (zmatrix::Vector{4, 7, 0, 0, 0, 9, 5}));
}

TEST_F(OcronEncoderTest, LimitsTheStackTo127) {
  std::vector<long long> stack(zmatrix::ocronStackSize, 0);
  int pointer = 0;
  for (int i = 1; i <= 130; i++) zmatrix::pushOnOcronStack(stack.data(), &pointer, i);
  EXPECT_EQ(pointer, 127);
  EXPECT_EQ(messages.take().find("pushOnOcronStack: max stack Ptr exceeded!\n"), 0u);
  for (int i = 127; i >= 1; i--) ASSERT_EQ(zmatrix::popFromOcronStack(stack.data(), &pointer), i);
  EXPECT_EQ(zmatrix::popFromOcronStack(stack.data(), &pointer), 0);
}

}  // namespace
