// The print-outs of header and records. The legends of the tables are part of the interface and keep their wording, even where
// they don't list all values.
#include "settings/ZQMatrixPrintouts.h"

#include <algorithm>
#include <cstdlib>

#include "settings/ZQMatrixFields.h"

using zmatrix::FieldRow;

namespace {

constexpr int longestPrintedSequence = 200;  ///< rows
constexpr int numberOfMidiChannels = sizeof(ZQMatrixProperties::midiChannelFilter);

constexpr char rule[] = "----------------------------------------------------------------------------------------------------\n";
constexpr char typeLegend[] = "type\t0=UNDEF,1=MIDI_2D,2=INT/SYMB,3=ANSI,4=MIDI_3D,5=MIDI_4D\n";
constexpr char fullTypeLegend[] = "typ\t\t0=UNDEF,1=MIDI_2D,2=INT/SYMB,3=ANSI,4=MIDI_3D,5=MIDI_4D\n";
constexpr char languageLegend[] = "lng\t\t0=UNDEF,1=German,2=English,3=French,4=Spanish\n";
constexpr char subTypeLegend[] = "mSTyp\t0=UNDEF,1=monophon,2=polyphon,3=percussion,4=multiChannel\n";
constexpr char preProcessingLegend[] = "pProc\t0=NONE,1-99= DIFF order 1-99, 1001: ANSI, 1002: MIDI ndif/modQuanta\n";
constexpr char preProcessingLegend2[] = "        1003: MIDI ndif/modQuant/duration,1004: MIDI ndif/mod/modQuant/sound\n";
constexpr char largeIndicesLegend[] = "lIndic\t0=normal, 1: 32Bit indices, 2: 64 Indices (long long)\n";

template <int numberOfLines>
void printTableHead(int maxNumberOfMatrices, const char* const (&lines)[numberOfLines]) {
  dbPrintf(0, "MATRIX BASIC PROPERTIES (max. no. of matrices: %d)\n", maxNumberOfMatrices);
  for (const char* line : lines) dbPrintf(0, "%s", line);
}

void printBlock(const char* prefix, const ZQMatrixProperties& block) {
  zmatrix::forEachBlockField(ZQMatrixInfoTypeFull, [&](const FieldRow& row) {
    if (row.kind == FieldRow::nameOfUpdateFile) {
      dbPrintf(1, "%snameOfUpdateFile: %.256s\n", prefix, block.nameOfUpdateFile);
    } else if (row.kind == FieldRow::midiChannelFilter) {
      for (int i = 0; i < numberOfMidiChannels; ++i)
        dbPrintf(1, "%smidiChannelFilter[%d]: %d\n", prefix, i, block.midiChannelFilter[i]);
    } else {
      dbPrintf(1, "%s%s: %d\n", prefix, row.name, row.valueIn(block));
    }
  });
}

template <class Record>
void printField(const FieldRow& row, Record& record) {
  row.inRecord.visit(
      record, [&row](const auto& field) { dbPrintf(1, "%s: %lld%s", row.label, static_cast<long long>(field), row.endOfLine); });
}

// A value of a packed row: little-endian, sign-extended if the stored width is negative.
long long unpackedValue(const unsigned char* from, int signedWidth) {
  const int width = std::abs(signedWidth);
  unsigned long long value = 0;
  for (int byte = width - 1; byte >= 0; --byte) value = (value << 8) | from[byte];
  const int unusedBits = 64 - 8 * width;
  if (signedWidth >= 0 || width == 0) return static_cast<long long>(value);
  return static_cast<long long>(value << unusedBits) >> unusedBits;
}

}  // namespace

void zmatrix::printBasicPropertiesHead(const ZQMatrixBaseInfo&, int maxNumberOfMatrices) {
  static constexpr const char* lines[] = {rule, typeLegend, largeIndicesLegend, "ID:\ttype\tcDim\tcount\tlIndc\n"};
  printTableHead(maxNumberOfMatrices, lines);
}

void zmatrix::printBasicPropertiesHead(const ZQMatrixMediumInfo&, int maxNumberOfMatrices) {
  static constexpr const char* lines[] = {rule,
                                          typeLegend,
                                          subTypeLegend,
                                          preProcessingLegend,
                                          preProcessingLegend2,
                                          largeIndicesLegend,
                                          "ID:\ttype\tcDim\tmSTyp\tsignat\tpProc\tphrLen\tcount\tlIndc\tOvdet\tmStyl/sID\n"};
  printTableHead(maxNumberOfMatrices, lines);
}

void zmatrix::printBasicPropertiesHead(const ZQMatrixInfo&, int maxNumberOfMatrices) {
  static constexpr const char* lines[] = {rule,
                                          fullTypeLegend,
                                          languageLegend,
                                          subTypeLegend,
                                          preProcessingLegend,
                                          preProcessingLegend2,
                                          "ID:\ttyp/lng\tcDim\tmSTyp\tsignat\tpProc\tphrLen\tcount\tOvdet\tmStl/sID\n"};
  printTableHead(maxNumberOfMatrices, lines);
}

void zmatrix::printBasicPropertiesRow(const ZQMatrixBaseInfo& record, int id) {
  dbPrintf(0, "%d\t%d\t%d\t%d\t%d\n", id, record.getMatrixType(), record.getCoordinateDimension(),
           record.getNumberOfWriteElements(), record.getAllowLargeIndices());
}

void zmatrix::printBasicPropertiesRow(const ZQMatrixMediumInfo& record, int id) {
  dbPrintf(0, "%d\t%d\t%d\t%d\t%d/%d\t%d\t%d\t%d\t%d\t%d\t%d/%d\n", id, record.getMatrixType(), record.getCoordinateDimension(),
           record.getMidiSubType(), record.getMidiTimeSignatureNom(), record.getMidiTimeSignatureDenom(),
           record.getPreProcessingType(), record.getMaxPhraseLengthForUpdateWithSequence(), record.getNumberOfWriteElements(),
           record.getAllowLargeIndices(), record.getIsOverDetermined(), record.getMusicStyle(), record.getMidiSoundID());
}

void zmatrix::printBasicPropertiesRow(const ZQMatrixInfo& record, int id) {
  dbPrintf(0, "%d\t%d/%d\t%d\t%d\t%d/%d\t%d\t%d\t%d\t%d\t%d/%d\n", id, record.getMatrixType(), record.getLanguage(),
           record.getCoordinateDimension(), record.getMidiSubType(), record.getMidiTimeSignatureNom(),
           record.getMidiTimeSignatureDenom(), record.getPreProcessingType(), record.getMaxPhraseLengthForUpdateWithSequence(),
           record.getNumberOfWriteElements(), record.getIsOverDetermined(), record.getMusicStyle(), record.getMidiSoundID());
}

void zmatrix::printRecordBanner(const ZQMatrixBaseInfo& record) {
  switch (record.getUpdateInfoType()) {
    case ZQMatrixInfoTypeBase:
      dbPrintf(1, "----------------matrix is BASIC update info TYPE (0)----------------\n");
      break;
    case ZQMatrixInfoTypeMedium:
      dbPrintf(1, "----------------matrix is MEDIUM update info TYPE (1)---------------\n");
      break;
    case ZQMatrixInfoTypeFull:
      dbPrintf(1, "----------------matrix is SYMBOL update info TYPE (2)----------------\n");
      break;
    default:
      break;
  }
}

void zmatrix::printRecordStatistics(const ZQMatrixBaseInfo& record, int maximalStack) {
  const double writeCounts = record.getNumberOfWriteCounts();
  if (writeCounts == 0) {
    dbPrintf(1, "averageRuleStrength (not available, numberOfWriteCounts =0)\n");
  } else {
    const double repeatedCounts = writeCounts - record.getNumberOfWriteElements();
    dbPrintf(1, "averageRuleStrength: %lf percent\n", repeatedCounts * 100.0 / writeCounts);
  }
  const double occupation = maximalStack > 0 ? static_cast<double>(record.getNumberOfMatrixElements()) / maximalStack : 0.0;
  dbPrintf(1, "Effective Occupation,related to maximalMatrixStack: %lf percent\n", occupation * 100.0);
}

void zmatrix::ZQMatrixFileHeader::printMatrixFileHeader() {
  dbPrintf(1, "*************************matrixFileHeader:***************************************\n");
  dbPrintf(1, "fileType: %s\n", fileType_);
  dbPrintf(1, "matrixDescription: %s\n", matrixDescription_);
  for (const NumberRow& row : numberRows()) {
    row.member.visit(*this, [&row](auto number) { dbPrintf(1, "%s: %lld\n", row.label, static_cast<long long>(number)); });
  }
  dbPrintf(1, "debugOutputDirectory: %s\n", matrixDebugDirectory_);
  dbPrintf(1, "originMatrixFile: %s\n", matrixOriginFilename_);
  dbPrintf(1, "destinationMatrixFile: %s\n", matrixDestinationFilename_);
  dbPrintf(1, "*************************matrix global Parameters:***************************************\n");
  printBlock("GLOBAL ", globalParameters_);
  printBlock("GLOBAL SYMBOL ", globalSymbolParameters_);
}

void ZQMatrixBaseInfo::printMatrixInfo() {
  if (updateInfoSize_ > 0) {
    dbPrintf(1, "updateInfoSize: %d: \n", updateInfoSize_);
  } else {
    dbPrintf(1, "updateInfoSize:  (not available)\n");
  }
  for (const FieldRow& row : zmatrix::fieldsAddedBy(ZQMatrixInfoTypeBase)) {
    printField(row, *this);
    if (row.kind == FieldRow::coordinateSizes) printCoordinateSizes();
  }
  if (!ZQDebugChannel::shows(4)) return;
  for (int i = 0; i < std::min(currentDimension_, minimalIndices_.count()); ++i) {
    dbPrintf(4, "dimension %d: ->_ %d, %d\n", i, minimalIndices_[i], maximalIndices_[i]);
  }
}

void ZQMatrixBaseInfo::printCoordinateSizes() {
  dbPrintf(1, "sizeOfCoordinateDimensions: \n");
  for (int k = 0; k < sizeOfCoordinateDimensions_.count(); ++k) {
    dbPrintf(1, "cdimension %d: size of coordinate:%d\n", k, sizeOfCoordinateDimensions_[k]);
  }
}

void ZQMatrixMediumInfo::printMatrixInfo() {
  ZQMatrixBaseInfo::printMatrixInfo();
  for (const FieldRow& row : zmatrix::fieldsAddedBy(ZQMatrixInfoTypeMedium)) {
    printField(row, *this);
    if (row.kind == FieldRow::nameOfUpdateFile) dbPrintf(1, "nameOfUpdateFile: %.256s: \n", nameOfUpdateFile_);
    if (row.kind == FieldRow::midiChannelFilter) {
      for (int i = 0; i < numberOfMidiChannels; ++i) dbPrintf(1, "midiChannelFilter %d: %d: \n", i, midiChannelFilter_[i]);
    }
  }
  printKernelItems("kernelOriginalSequence", kernelOriginalSequence_, lengthOfKernelOriginalSequence_);
  printKernelItems("kernelPreProcessedSequence", kernelPreProcessedSequence_, lengthOfKernelPreProcessedSequence_);
  printKernelItems("kernelOriginalSequenceInitialValues", kernelOriginalSequenceInitialValues_, lengthOfKernelOriginalSequence_);
  dbPrintf(1, "hasBeenChanged: %d: \n", hasBeenChanged_);
  if (!namesOfUpdateFiles_.empty()) dbPrintf(1, "namesOfUpdateFiles: \n%s", namesOfUpdateFiles_.data());
  printUpdateSequence();
  printDimensions();
}

void ZQMatrixMediumInfo::printKernelItems(const char* name, zmatrix::ZQKernelItems& items, int numberOfItems) {
  if (!items.provide(coordinateDimension_, zmatrix::initialKernelLength) || !ZQDebugChannel::shows(1)) return;
  for (int i = 0; i < std::min({numberOfItems, items.room(), longestPrintedSequence}); ++i) {
    dbPrintf(1, "%s %d:", name, i);
    for (int k = 0; k < coordinateDimension_; ++k) dbPrintf(1, " %d", items.at(i, k));
    dbPrintf(1, "\n");
  }
}

void ZQMatrixMediumInfo::printUpdateSequence() {
  const int sizeOfRow = sizeOfUpdateRow();
  if (sizeOfRow < 1 || !ZQDebugChannel::shows(1)) return;
  const int numberOfRows = std::min({lengthOfUpdateSequence_, updateSequence_.count() / sizeOfRow, longestPrintedSequence});
  const unsigned char* value = reinterpret_cast<const unsigned char*>(updateSequence_.data());
  for (int i = 0; i < numberOfRows; ++i) {
    dbPrintf(1, "updateSequence %d:", i);
    for (int k = 0; k < coordinateDimension_; ++k) {
      dbPrintf(1, " %lld", unpackedValue(value, sizeOfCoordinateDimensions_[k]));
      value += std::abs(sizeOfCoordinateDimensions_[k]);
    }
    dbPrintf(1, "\n");
  }
}

void ZQMatrixMediumInfo::printDimensions() {
  for (int i = 0; i < std::min(currentDimension_, writeElementsInDimension_.count()); ++i) {
    if (writeElementsInDimension_[i] == 0 && rulesInDimension_[i] == 0 && uniqueRulesInDimension_[i] == 0) continue;
    dbPrintf(1, "dimension %d: no of writeElements: %d\n", i, writeElementsInDimension_[i]);
    dbPrintf(1, "              no of ruleElements: %d\n", rulesInDimension_[i]);
    dbPrintf(1, "        no of uniqueRuleElements: %d\n", uniqueRulesInDimension_[i]);
  }
}

void ZQMatrixInfo::printMatrixInfo() {
  ZQMatrixMediumInfo::printMatrixInfo();
  for (const FieldRow& row : zmatrix::fieldsAddedBy(ZQMatrixInfoTypeFull)) printField(row, *this);
}
