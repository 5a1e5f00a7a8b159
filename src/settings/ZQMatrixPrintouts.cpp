// The print-outs of header and records. The texts of the tables' legends are the system's own and stay as they are, even where
// the profiles have moved on.
#include "settings/ZQMatrixPrintouts.h"

#include <algorithm>
#include <cstdlib>

#include "settings/ZQMatrixSettingTable.h"

namespace {

constexpr int longestPrintedSequence = 200;  ///< rows

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
#define ZQ_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) \
  dbPrintf(1, "%s" #name ": %d\n", prefix, static_cast<int>(block.name));
#define ZQ_UNSAVED_SETTING(type, name, Name) dbPrintf(1, "%s" #name ": %d\n", prefix, block.name);
#define ZQ_TEXT_SETTING(name, Name, bytes) dbPrintf(1, "%s" #name ": %.*s\n", prefix, bytes, block.name);
#define ZQ_BYTES_SETTING(name, Name, bytes) \
  for (int i = 0; i < bytes; ++i) dbPrintf(1, "%s" #name "[%d]: %d\n", prefix, i, block.name[i]);
#include "settings/ZQMatrixSettings.def"
}

// A value of a packed row: little byte first, sign-extended if the stored width is negative.
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

void ZQMatrixFileHeader::printMatrixFileHeader() {
  dbPrintf(1, "*************************matrixFileHeader:***************************************\n");
  dbPrintf(1, "fileType: %s\n", fileType);
  dbPrintf(1, "matrixDescription: %s\n", matrixDescription);
  dbPrintf(1, "lastSoftwareVersion: %d\n", lastSoftwareVersion);
  dbPrintf(1, "is64BitMatrix: %d\n", is64BitMatrix);
  dbPrintf(1, "maxNumberOfMatrices: %d\n", maxNumberOfMatrices);
  dbPrintf(1, "numberOfMatrices: %d\n", numberOfMatrices);
  dbPrintf(1, "matrixAILevel: %d\n", matrixAILevel);
  dbPrintf(1, "offsetToUpdateInfos: %d\n", offsetToUpdateInfos);
  dbPrintf(1, "matrixBlockSize: %d\n", matrixBlockSize);
  dbPrintf(1, "matrixBlockSizeOld: %d\n", matrixBlockSizeOld);
  dbPrintf(1, "maximalStack: %d\n", maximalStack);
  dbPrintf(1, "numberMatrixUpdates: %d\n", numberOfMatrixUpdates);
  dbPrintf(1, "numberAppendedUpdates: %d\n", numberOfAppendedUpdates);
  dbPrintf(1, "debugOutputDevice: %d\n", matrixDebugOutputDevice);
  dbPrintf(1, "userRandomValue: %lld\n", userRandomValue);
  dbPrintf(1, "userRandomType: %d\n", userRandomType);
  dbPrintf(1, "systemRandomValue: %lld\n", systemRandomValue);
  dbPrintf(1, "systemRandomType: %d\n", systemRandomType);
  dbPrintf(1, "matrixInfoType: %d\n", matrixInfoType);
  dbPrintf(1, "debugOutputDirectory: %s\n", matrixDebugDirectory);
  dbPrintf(1, "originMatrixFile: %s\n", matrixOriginFilename);
  dbPrintf(1, "destinationMatrixFile: %s\n", matrixDestinationFilename);
  dbPrintf(1, "*************************matrix global Parameters:***************************************\n");
  printBlock("GLOBAL ", globalParameters);
  printBlock("GLOBAL SYMBOL ", globalSymbolParameters);
}

void ZQMatrixBaseInfo::printMatrixInfo() {
  if (updateInfoSize > 0) {
    dbPrintf(1, "updateInfoSize: %d: \n", updateInfoSize);
  } else {
    dbPrintf(1, "updateInfoSize:  (not available)\n");
  }
#define ZQ_BASE_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) dbPrintf(1, format, static_cast<printType>(name));
#define ZQ_BEHIND_MEM_IS_READ_ONLY printCoordinateSizes();
#include "settings/ZQMatrixInfoFields.def"
  if (!ZQDebugChannel::shows(4)) return;
  for (int i = 0; i < std::min(currentDimension, minimalIndices.size()); ++i) {
    dbPrintf(4, "dimension %d: ->_ %d, %d\n", i, minimalIndices[i], maximalIndices[i]);
  }
}

void ZQMatrixBaseInfo::printCoordinateSizes() {
  dbPrintf(1, "sizeOfCoordinateDimensions: \n");
  for (int k = 0; k < sizeOfCoordinateDimensions.size(); ++k) {
    dbPrintf(1, "cdimension %d: size of coordinate:%d\n", k, sizeOfCoordinateDimensions[k]);
  }
}

void ZQMatrixMediumInfo::printMatrixInfo() {
  ZQMatrixBaseInfo::printMatrixInfo();
#define ZQ_MEDIUM_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) dbPrintf(1, format, static_cast<printType>(name));
#define ZQ_BEHIND_PRE_PROCESSING_TYPE dbPrintf(1, "nameOfUpdateFile: %.256s: \n", nameOfUpdateFile);
#define ZQ_BEHIND_MUSIC_STYLE \
  for (int i = 0; i < 16; ++i) dbPrintf(1, "midiChannelFilter %d: %d: \n", i, midiChannelFilter[i]);
#include "settings/ZQMatrixInfoFields.def"
  printKernelItems("kernelOriginalSequence", kernelOriginalSequence, lengthOfKernelOriginalSequence);
  printKernelItems("kernelPreProcessedSequence", kernelPreProcessedSequence, lengthOfKernelPreProcessedSequence);
  printKernelItems("kernelOriginalSequenceInitialValues", kernelOriginalSequenceInitialValues, lengthOfKernelOriginalSequence);
  dbPrintf(1, "hasBeenChanged: %d: \n", hasBeenChanged);
  if (namesOfUpdateFiles.size() > 0) dbPrintf(1, "namesOfUpdateFiles: \n%s", namesOfUpdateFiles.data());
  printUpdateSequence();
  printDimensions();
}

void ZQMatrixMediumInfo::printKernelItems(const char* name, zmatrix::ZQKernelItems& items, int numberOfItems) {
  if (!items.provide(coordinateDimension, firstKernelLength) || !ZQDebugChannel::shows(1)) return;
  for (int i = 0; i < std::min({numberOfItems, items.room(), longestPrintedSequence}); ++i) {
    dbPrintf(1, "%s %d:", name, i);
    for (int k = 0; k < coordinateDimension; ++k) dbPrintf(1, " %d", items.at(i, k));
    dbPrintf(1, "\n");
  }
}

void ZQMatrixMediumInfo::printUpdateSequence() {
  const int sizeOfRow = sizeOfUpdateRow();
  if (sizeOfRow < 1 || !ZQDebugChannel::shows(1)) return;
  const int numberOfRows = std::min({lengthOfUpdateSequence, updateSequence.size() / sizeOfRow, longestPrintedSequence});
  const unsigned char* value = reinterpret_cast<const unsigned char*>(updateSequence.data());
  for (int i = 0; i < numberOfRows; ++i) {
    dbPrintf(1, "updateSequence %d:", i);
    for (int k = 0; k < coordinateDimension; ++k) {
      dbPrintf(1, " %lld", unpackedValue(value, sizeOfCoordinateDimensions[k]));
      value += std::abs(sizeOfCoordinateDimensions[k]);
    }
    dbPrintf(1, "\n");
  }
}

void ZQMatrixMediumInfo::printDimensions() {
  for (int i = 0; i < std::min(currentDimension, writeElementsInDimension.size()); ++i) {
    if (writeElementsInDimension[i] == 0 && rulesInDimension[i] == 0 && uniqueRulesInDimension[i] == 0) continue;
    dbPrintf(1, "dimension %d: no of writeElements: %d\n", i, writeElementsInDimension[i]);
    dbPrintf(1, "              no of ruleElements: %d\n", rulesInDimension[i]);
    dbPrintf(1, "        no of uniqueRuleElements: %d\n", uniqueRulesInDimension[i]);
  }
}

void ZQMatrixInfo::printMatrixInfo() {
  ZQMatrixMediumInfo::printMatrixInfo();
#define ZQ_FULL_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) dbPrintf(1, format, static_cast<printType>(name));
#include "settings/ZQMatrixInfoFields.def"
}
