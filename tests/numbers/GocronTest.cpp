// Gocrons: digits and their order, overflow, and sequences of gocrons.
#include <climits>
#include <random>

#include "NumbersFixture.h"
#include "numbers/ZQGocron.h"
#include "numbers/ZQGocronSequence.h"
#include "support/KeptText.h"

namespace {

class GocronTest : public zmatrix::NumbersFixture {
 public:
  static long long gocron(int type, const std::string& ocron) {
    return zmatrix::ocronToGocron(type, ocron.c_str(), static_cast<int>(ocron.size()));
  }
  std::string ocron(int type, long long gocron) { return textOf(zmatrix::gocronToOcron(type, gocron, &length)); }
  std::string next(int type, const std::string& ocron) {
    char buffer[200];
    strcpy(buffer, ocron.c_str());
    length = static_cast<int>(ocron.size());
    return zmatrix::incrementOcron(type, buffer, sizeof buffer, &length) == 1 ? buffer : "(refused)";
  }
  std::vector<long long> gocrons(int type, const std::string& ocrons, const char* log = nullptr) {
    const zmatrix::Vector items(ocrons.begin(), ocrons.end());
    return zmatrix::taken(zmatrix::createGoedelSequenceFromOcronSequence(type, items.data(), static_cast<int>(items.size()), '\n',
                                                                         &length, &status, &maximalValue, log),
                          length);
  }

  int length = 0, status = 0;
  long long maximalValue = 0;
};

TEST_F(GocronTest, ConvertsOcronsBothWays) {
  zmatrix::expectKeptCases("gocrons.txt", [this](const std::string& line) {
    const int type = line[2] - '0';
    const std::string rest = repeated(line.substr(std::min<size_t>(4, line.size())));
    const int size = static_cast<int>(rest.size());
    std::string output;
    messages.take();
    if (line[0] == 'g') output = std::to_string(gocron(type, rest));
    if (line[0] == 'o') output = ocron(type, std::stoll(rest));
    if (line[0] == '1') output = std::to_string(zmatrix::ocronToGocron1(type, rest.c_str(), size));
    if (line[0] == 'n') output = next(type, rest);
    if (line[0] == 'q') {
      const lQuaternionTag tag = zmatrix::ocronToLQGocron(type, rest.c_str(), size);
      for (const long long part : {tag.r, tag.i, tag.j, tag.k}) output += std::to_string(part) + " ";
    }
    if (line[0] == 's') {
      maximalValue = 0;
      for (const long long each : gocrons(type, rest)) output += std::to_string(each) + " ";
      output += "status " + std::to_string(status) + " largest " + std::to_string(maximalValue);
    }
    return output + "\n" + messages.take();
  });
  EXPECT_EQ(zmatrix::ocronToGocron(4, "2", -1), 0);
  for (int type = 3; type <= 6; type++)
    for (long long n : {1LL, 4711LL, 1LL << 40, (1LL << 59) - 1}) EXPECT_EQ(gocron(type, ocron(type, n)), n) << type;
  gocronParametersTag& parameters = *zmatrix::getGlobalGocronParameters();
  parameters.gocronNumberBase = 10;
  EXPECT_EQ(ocron(4, 1937), "P?^?");
  EXPECT_EQ(ocron(6, 1937), "P");
  for (int base : {1, -3, INT_MIN}) {
    parameters.gocronNumberBase = base;
    EXPECT_EQ(ocron(4, 6), "(null)");
    EXPECT_EQ(gocron(4, "P2"), base == 1 ? 3 : -1);
  }
}

TEST_F(GocronTest, AcceptsAnyParameters) {
  gocronParametersTag& parameters = *zmatrix::getGlobalGocronParameters();
  std::mt19937 random(3);
  for (int i = 0; i < 3000; i++) {
    parameters = {4, 10, 0, 0, static_cast<int>(random()), static_cast<int>(random()), static_cast<int>(random()), INT_MIN, 3, 4};
    std::string symbols;
    for (size_t n = random() % 80; n > 0; n--) symbols += "*P2^Q"[random() % 5];
    for (int type = 3; type <= 7; type++) {
      gocron(type, symbols);
      ocron(type, static_cast<long long>(random()) << (random() % 31));
      zmatrix::ocronToGocron1(type, symbols.c_str(), static_cast<int>(symbols.size()));
      zmatrix::ocronToLQGocron(type, symbols.c_str(), static_cast<int>(symbols.size()));
      next(type, symbols);
    }
  }
}

TEST_F(GocronTest, IncrementsLikeTheNextNumber) {
  std::string symbols = next(4, "");
  for (int n = 0; n < 5000; n++, symbols = next(4, symbols)) ASSERT_EQ(symbols, ocron(4, n));
  char buffer[2] = "2";
  length = 0;
  EXPECT_EQ(zmatrix::incrementOcron(4, buffer, 0, &length), -1);
  EXPECT_EQ(zmatrix::incrementOcron(4, nullptr, 9, &length), -1);
}

TEST_F(GocronTest, ConvertsSequences) {
  const zmatrix::TestFolder folder;
  const std::string log = folder.path() + "/log";
  EXPECT_EQ(gocrons(4, "2\n\n2P\n22^", log.c_str()), (std::vector<long long>{2, -1, 9, 43}));
  EXPECT_EQ(folder.contentOf(log),
            "gocron4: 9 ocron items (incl. EOO Symbol) \n2:\t\t2\t\t2\n-1:\t\t-1\t\t\n3:\t\t9\t\t2P\n4:\t\t43\t\t22^\n");
  const zmatrix::Vector numbers = {3, 1, 2, 101};
  int* narrowed = zmatrix::createGoedelSequenceFromIntegerSequenceUseGlobalPars(numbers.data(), 4, &length);
  EXPECT_EQ(zmatrix::taken(narrowed, length), (zmatrix::Vector{9, 2, static_cast<int>(zmatrix::intToGocron(4, 101))}));
  EXPECT_EQ(zmatrix::createGoedelSequenceFromIntegerSequenceUseGlobalPars(numbers.data() + 1, 1, &length), nullptr);
}

TEST_F(GocronTest, RanksNumbersByGocron) {
  zmatrix::Vector numbers(3000);
  for (size_t i = 0; i < numbers.size(); i++) numbers[i] = 3000 - static_cast<int>(i);
  const auto records = zmatrix::taken(zmatrix::createGocronCodeIndices(4, numbers.data(), 3000), 3000);
  ASSERT_EQ(records.size(), 3000u);
  std::vector<bool> isTaken(3000);
  for (size_t i = 0; i < records.size(); i++) {
    ASSERT_EQ(records[i].naturalNumber, static_cast<long long>(i) + 1);
    ASSERT_EQ(records[i].gocronCode, zmatrix::intToGocron(4, static_cast<int>(i) + 1));
    isTaken[static_cast<size_t>(records[i].index)] = true;
    const auto& other = records[(i * 7919) % 3000];
    const bool areEqual = records[i].gocronCode == other.gocronCode;
    ASSERT_TRUE(areEqual || (records[i].gocronCode < other.gocronCode) == (records[i].index < other.index));
  }
  EXPECT_EQ(std::count(isTaken.begin(), isTaken.end(), true), 3000);
  for (int none : {0, -1}) EXPECT_EQ(zmatrix::createGocronCodeIndices(4, numbers.data(), none), nullptr);
  messages.take();
  EXPECT_EQ(zmatrix::createGocronCodeIndices(8, numbers.data(), 3), nullptr);
  EXPECT_EQ(messages.take(), "createGocronCodeIndices: wrong ocronType: 8\n");
}

}  // namespace
