// What a kern file gives and what is wrong with it, as the check and the reading themselves tell it.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

zq_KernReport* createKernReport(const char* fileName, int preProcessingType, int midiTrackAnalyze,
                                const unsigned char* channelFilter);
void deleteKernReport(zq_KernReport* report);

}  // namespace zmatrix
