// The report on a kern file: what would be learned from it, and the findings of its check and its reading.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

[[nodiscard]] zq_KernReport* createKernReport(const char* fileName, int preProcessingType, int midiTrackAnalyze,
                                              const unsigned char* channelFilter);
void deleteKernReport(zq_KernReport* report);

}  // namespace zmatrix
