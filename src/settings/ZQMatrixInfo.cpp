#include "settings/ZQMatrixInfo.h"

#include "frame/ZQDebugChannel.h"

int ZQMatrixInfo::initMatrixInfo(int id) {
  const int hasRoom = ZQMatrixMediumInfo::initMatrixInfo(id);
#define ZQ_FULL_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) name = initial;
#include "settings/ZQMatrixInfoFields.def"
  updateInfoType = ZQMatrixInfoTypeFull;
  return hasRoom;
}

void ZQMatrixInfo::deInitMatrixInfo() {
  if (updateInfoType >= ZQMatrixInfoTypeMedium) {
#define ZQ_FULL_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) name = -1;
#include "settings/ZQMatrixInfoFields.def"
  }
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
#define ZQ_FULL_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) snapshot->name = name;
#include "settings/ZQMatrixInfoFields.def"
  return snapshot;
}
