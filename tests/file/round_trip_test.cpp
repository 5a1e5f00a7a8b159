// A saved matrix comes back whole: every slot, every field, the kernel, the random states; and it goes on as the one that was
// saved does.
#include "file/MatrixUnderTest.h"

namespace {

using namespace zmatrix;

template <class Matrix>
class RoundTripTest : public testing::Test {
 public:
  using Access = TierUnderTest<Matrix>;

  RoundTripTest() : path(folder.path() + "/model.zmatrix") {}
  ~RoundTripTest() override {
    Access::destroy(saved);
    Access::destroy(loaded);
    setSearchState({});
  }

  void saveAndLoad() {
    ASSERT_EQ(saved->saveMatrixToDisk(path.c_str()), 1);
    ASSERT_EQ(loaded->readAndInitMatrixFromDisk(path.c_str(), -1), 1);
  }

  TestFolder folder;
  std::string path;
  Matrix* saved = createFilled<Matrix>();
  Matrix* loaded = Access::create();
};
TYPED_TEST_SUITE(RoundTripTest, Tiers);

TYPED_TEST(RoundTripTest, everySlotComesBack) {
  this->saveAndLoad();
  EXPECT_EQ(slotsOf(*this->loaded), slotsOf(*this->saved));
  EXPECT_EQ(this->loaded->getMatrixFileHeader()->getMaximalStack(), this->saved->getMatrixFileHeader()->getMaximalStack());
  EXPECT_EQ(this->loaded->getMatrixFileHeader()->getMatrixBlockSize(), this->saved->getMatrixFileHeader()->getMatrixBlockSize());
  // Deletes have let the counters drift; the loaded ones stand where the saved ones do.
  for (int id = 0; id < 4; ++id) {
    this->saved->setCurrentMatrixID(id);
    this->loaded->setCurrentMatrixID(id);
    int savedCounts[2], loadedCounts[2];
    EXPECT_EQ(this->loaded->performMatrixConsistencyTest(&loadedCounts[0], &loadedCounts[1], 0),
              this->saved->performMatrixConsistencyTest(&savedCounts[0], &savedCounts[1], 0));
    EXPECT_EQ(loadedCounts[0], savedCounts[0]);
    EXPECT_EQ(loadedCounts[1], savedCounts[1]);
  }
}

}  // namespace
