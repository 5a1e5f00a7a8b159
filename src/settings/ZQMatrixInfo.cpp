#include "settings/ZQMatrixInfo.h"

#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixFields.h"

int ZQMatrixInfo::initMatrixInfo(int id) {
  const int hasRoom = ZQMatrixMediumInfo::initMatrixInfo(id);
  zmatrix::setToDefaults(*this, ZQMatrixInfoTypeFull);
  updateInfoType_ = ZQMatrixInfoTypeFull;
  return hasRoom;
}

void ZQMatrixInfo::deInitMatrixInfo() {
  if (updateInfoType_ >= ZQMatrixInfoTypeMedium) zmatrix::setToUnusable(*this, ZQMatrixInfoTypeFull);
  ZQMatrixMediumInfo::deInitMatrixInfo();
}

void ZQMatrixInfo::storeLevelLink(int& link, int id, const char* setter) {
  if (id == link) return;
  if (id < 0) {
    dbPrintf(0, "%s: Illegal value: %d\n", setter, id);
  } else {
    link = id;
  }
}

ZQMatrixProperties* ZQMatrixInfo::getGlobalMatrixInfoParameters() {
  ZQMatrixProperties* snapshot = ZQMatrixMediumInfo::getGlobalMatrixInfoParameters();
  if (snapshot == nullptr) return nullptr;
  zmatrix::copyToSnapshot(*this, ZQMatrixInfoTypeFull, *snapshot);
  return snapshot;
}
