// The codec of the full part of an info record. A record read from a lower tier's file numbers its symbols from 1, a new one from
// 257.
#include "settings/ZQMatrixInfoCodec.h"

template <class Fields>
void ZQMatrixInfo::describeFullPart(Fields& fields) {
  for (const zmatrix::FieldRow& row : zmatrix::fieldsAddedBy(ZQMatrixInfoTypeFull)) zmatrix::describeField(fields, row, *this);
}

int ZQMatrixInfo::readUpdateInfo(zmatrix::ZQFileReader& file, int withSequence) {
  const int id = matrixId_;
  zmatrix::ZQFieldReader fields(file);
  bool isRead = readMediumPart(fields, withSequence);
  if (isRead && updateInfoType_ >= ZQMatrixInfoTypeFull) {
    describeFullPart(fields);
    fields.endPart();
    isRead = fields.isSound();
  }
  if (!isRead || !hasLegalSize(fields, withSequence)) return refuseRecord(*this, id);
  if (updateInfoType_ >= ZQMatrixInfoTypeFull) return 1;
  currentMatrixIdLevelDown_ = currentMatrixIdLevelUp_ = -1;
  numberOfSymbols_ = newSymbol_ = 0;
  keepSymbolsWhenRemoveOverdeterminedElements_ = 1;
  return 1;
}

void ZQMatrixInfo::writeUpdateInfo(zmatrix::ZQFileWriter& file, int withSequence) {
  writeParts(
      file, [this](auto& fields) { describeBasePart(fields); },
      [this, withSequence](auto& fields) {
        if (updateInfoType_ >= ZQMatrixInfoTypeMedium) describeMediumPart(fields, withSequence);
      },
      [this](auto& fields) {
        if (updateInfoType_ >= ZQMatrixInfoTypeFull) describeFullPart(fields);
      });
}
