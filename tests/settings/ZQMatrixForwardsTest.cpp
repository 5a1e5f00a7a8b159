// The forwards on small stand-ins for the matrix classes of the three tiers.
#include "settings/ZQMatrixForwards.h"

#include <gtest/gtest.h>

#include <climits>

#include "support/CapturedMessages.h"

namespace {

using zmatrix::CapturedMessages;

class BaseStandIn : public ZQMatrixBaseForwards<BaseStandIn> {
 public:
  BaseStandIn() {
    header.initFileHeader(0);
    for (int id = 0; id < 4; ++id) records[id].initMatrixInfo(id);
  }
  ZQMatrixFileHeader* getMatrixFileHeader() { return &header; }
  ZQMatrixBaseInfo* getMatrixInfo() { return &records[currentMatrixID]; }
  ZQMatrixBaseInfo* getMatrixInfo(int id) { return &records[id]; }
  int getCurrentMatrixID() { return currentMatrixID; }
  void setCurrentMatrixID(int id) { currentMatrixID = id; }

 protected:
  ZQMatrixFileHeader header;
  ZQMatrixInfo records[4];
  int currentMatrixID = 0;
};

class MediumStandIn : public ZQMatrixMediumForwards<MediumStandIn, BaseStandIn> {
 public:
  ZQMatrixMediumInfo* getMatrixInfo() { return &records[currentMatrixID]; }
  ZQMatrixMediumInfo* getMatrixInfo(int id) { return &records[id]; }
};

class FullStandIn : public ZQMatrixFullForwards<FullStandIn, MediumStandIn> {
 public:
  ZQMatrixInfo* getMatrixInfo() { return &records[currentMatrixID]; }
  ZQMatrixInfo* getMatrixInfo(int id) { return &records[id]; }
};

TEST(ZQMatrixForwards, ReachHeaderAndCurrentRecord) {
  FullStandIn matrix;
  matrix.setCurrentMatrixID(2);
  matrix.setMidiTrackAnalize(1);
  matrix.setMatrixType(3);
  matrix.setSucessorMethod(2);
  matrix.setKeepSymbolsWhenRemoveOverdeterminedElements(0);
  EXPECT_EQ(matrix.getMatrixInfo(2)->getMidiTrackAnalyze(), 1);
  EXPECT_EQ(matrix.getMatrixInfo(2)->getMatrixType(), 3);
  EXPECT_EQ(matrix.getMatrixInfo(2)->getSuccessorMethod(), 2);
  EXPECT_EQ(matrix.getMatrixInfo(2)->getKeepSymbolsWhenRemoveOverdeterminedElements(), 0);
  EXPECT_EQ(matrix.getMatrixInfo(0)->getMatrixType(), 0);
  matrix.setGlobalMidiSubType(4);
  matrix.setGlobalSymbolMidiSoundID(5);
  EXPECT_EQ(matrix.getMatrixFileHeader()->getGlobalMidiSubType(), 4);
  EXPECT_EQ(matrix.getGlobalSymbolMatrixProperties()->midiSoundID, ZQMatrixSoundBass);
  EXPECT_EQ(matrix.getUserRandomValue(), 292715034);
}

TEST(ZQMatrixForwards, ATierUsesItsOwnRecord) {
  FullStandIn full;
  MediumStandIn& medium = full;
  BaseStandIn& base = full;
  full.getMatrixInfo()->getKernelOriginalSequence()[0][0] = 7;
  base.setCoordinateDimension(2);
  EXPECT_EQ(full.getMatrixInfo()->getKernelOriginalSequence()[0][0], 7) << "the base knows no kernel";
  medium.setCoordinateDimension(3);
  EXPECT_EQ(full.getMatrixInfo()->getKernelOriginalSequence()[0][0], 0) << "the medium tier drops it";

  EXPECT_EQ(base.getGlobalMatrixInfoParameters()->successorMethod, 0);
  EXPECT_EQ(medium.getGlobalMatrixInfoParameters()->successorMethod, 3);
  EXPECT_EQ(medium.getGlobalMatrixInfoParameters()->newSymbol, 0);
  EXPECT_EQ(full.getGlobalMatrixInfoParameters()->newSymbol, 256);
  full.releaseMemoryGlobalMatrixInfoParameters();

  medium.setGlobalDefaultMatrixPropertiesForSymbols();
  EXPECT_EQ(full.getGlobalKeepSymbolsWhenRemoveOverdeterminedElements(), 1);
  full.setGlobalDefaultMatrixPropertiesForSymbols();
  EXPECT_EQ(full.getGlobalKeepSymbolsWhenRemoveOverdeterminedElements(), 0);
}

TEST(ZQMatrixForwards, SuccessorGeneratorsGoByMatrixID) {
  MediumStandIn matrix;
  CapturedMessages messages(0);
  EXPECT_EQ(matrix.getSuccessorRandomValue(3), 292715034);
  EXPECT_EQ(matrix.getActualSuccessorRandomValue(3), 292715034);
  EXPECT_EQ(matrix.getActualSuccessorRandomValue(2), 31459);
  matrix.setSuccessorRandomValue(3, 5);
  EXPECT_EQ(matrix.getActualSuccessorRandomValue(3), 5);
  for (int id : {-1, 4, INT_MAX}) {
    matrix.setSuccessorRandomValue(id, 1);
    matrix.setSuccessorRandomType(id, 1);
    EXPECT_EQ(matrix.getSuccessorRandomValue(id), 0);
  }
  EXPECT_EQ(messages.take(), "");

  matrix.getMatrixInfo(1)->setNumberOfWriteElements(1);
  matrix.setSuccessorRandomType(1, 9);
  EXPECT_EQ(messages.take(), "setSuccessorRandomType: can only be set for an empty matrix\n");
  matrix.getMatrixInfo(1)->setNumberOfMatrixElements(1);
  matrix.setSuccessorRandomType(1, 9);
  EXPECT_EQ(matrix.getSuccessorRandomType(1), 9);
  EXPECT_EQ(messages.take(), "");
}

TEST(ZQMatrixForwards, BasicPropertiesAreATableOfWrittenMatrices) {
  FullStandIn full;
  MediumStandIn& medium = full;
  full.getMatrixInfo(1)->setNumberOfWriteElements(12);
  full.getMatrixInfo(1)->setLanguage(2);
  full.getMatrixInfo(2)->setNumberOfMatrixElements(5);  // elements alone make no row
  CapturedMessages messages(0);
  medium.showBasicProperties();
  const std::string mediumText = messages.take();
  full.showBasicProperties();
  const std::string fullText = messages.take();
  EXPECT_EQ(mediumText.find("MATRIX BASIC PROPERTIES (max. no. of matrices: 4)\n"), 0u);
  const std::string mediumEnd =
      "type\t0=UNDEF,1=MIDI_2D,2=INT/SYMB,3=ANSI,4=MIDI_3D,5=MIDI_4D\n"
      "mSTyp\t0=UNDEF,1=monophon,2=polyphon,3=percussion,4=multiChannel\n"
      "pProc\t0=NONE,1-99= DIFF order 1-99, 1001: ANSI, 1002: MIDI ndif/modQuanta\n"
      "        1003: MIDI ndif/modQuant/duration,1004: MIDI ndif/mod/modQuant/sound\n"
      "lIndic\t0=normal, 1: 32Bit indices, 2: 64 Indices (long long)\n"
      "ID:\ttype\tcDim\tmSTyp\tsignat\tpProc\tphrLen\tcount\tlIndc\tOvdet\tmStyl/sID\n"
      "1\t0\t1\t0\t4/4\t0\t64\t12\t0\t1\t0/0\n";
  EXPECT_TRUE(mediumText.ends_with(mediumEnd)) << mediumText;
  EXPECT_NE(fullText.find("typ\t\t0=UNDEF,1=MIDI_2D,2=INT/SYMB,3=ANSI,4=MIDI_3D,5=MIDI_4D\n"
                          "lng\t\t0=UNDEF,1=German,2=English,3=French,4=Spanish\n"),
            std::string::npos);
  EXPECT_TRUE(
      fullText.ends_with("ID:\ttyp/lng\tcDim\tmSTyp\tsignat\tpProc\tphrLen\tcount\tOvdet\tmStl/sID\n"
                         "1\t0/2\t1\t0\t4/4\t0\t64\t12\t1\t0/0\n"))
      << fullText;
}

TEST(ZQMatrixForwards, OverallInfoReachesUpToTheHighestOccupiedMatrix) {
  MediumStandIn matrix;
  for (int id = 0; id < 4; ++id) matrix.getMatrixInfo(id)->setUpdateInfoType(ZQMatrixInfoTypeMedium);
  matrix.getMatrixFileHeader()->_setMaximalStack(200);
  ZQMatrixMediumInfo& second = *matrix.getMatrixInfo(1);
  second.setNumberOfMatrixElements(50);
  second.setNumberOfWriteElements(10);
  second.setNumberOfWriteCounts(40);
  matrix.printMatrixOverallInfo();  // no debug file, nothing to print on
  CapturedMessages messages(1);
  matrix.printMatrixOverallInfo();
  const std::string text = messages.take();
  const std::string banner = "----------------matrix is MEDIUM update info TYPE (1)---------------\n";
  EXPECT_EQ(text.find(banner), 0u);
  EXPECT_EQ(text.rfind(banner), text.find(banner, 1)) << "two records";
  EXPECT_NE(text.find("averageRuleStrength (not available, numberOfWriteCounts =0)\n"), std::string::npos);
  EXPECT_TRUE(
      text.ends_with("averageRuleStrength: 75.000000 percent\n"
                     "Effective Occupation,related to maximalMatrixStack: 25.000000 percent\n"))
      << text;
}

}  // namespace
