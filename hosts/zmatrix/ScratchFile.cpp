#include "ScratchFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include "Inputs.h"
#include "PendingFile.h"

ScratchFile::ScratchFile() : descriptor_(memfd_create("zmatrix", MFD_CLOEXEC)) {
  if (descriptor_ < 0) failToWrite("cannot write", "a file in memory");
}

ScratchFile::~ScratchFile() {
  close(descriptor_);
}

std::string ScratchFile::path() const {
  return "/proc/self/fd/" + std::to_string(descriptor_);
}

std::string ScratchFile::bytes() const {
  return readFile(path());
}
