// A kern text in, what the library says and makes of it out, in words that a test can hold against what is expected.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "music/kern/ZQKernFile.h"
#include "support/CapturedMessages.h"
#include "support/TestFolder.h"

namespace zmatrix {

/// Records a line each, tokens apart by blanks; "_" stands for a blank within a token.
inline std::string kern(const std::string& records) {
  std::string text = records;
  for (char& character : text) character = character == ' ' ? '\t' : character == '_' ? ' ' : character;
  return text + "\n";
}

inline std::string sayObject(const ZQKernObject& object) {
  std::ostringstream said;
  const std::string time = std::to_string(object.getTimeQuanta()) + ":";
  switch (object.getType()) {
    case ZQKernObjectNoteOn:
      said << "n" << time << int(object.getNoteNumber()) << "+" << object.getDuration();
      break;
    case ZQKernObjectNoteOff:
      said << "o" << time << int(object.getNoteNumber());
      break;
    case ZQKernObjectTimeSignature:
      said << "M" << time << object.getTimeSignatureNom() << "/" << object.getTimeSignatureDenom();
      break;
    case ZQKernObjectKeySignature:
      said << "k" << time << object.getKeySignature(nullptr);
      break;
    case ZQKernObjectTempo:
      said << "T" << time << object.getTempo();
      break;
    default:
      said << "#" << time << object.getBuffer();
  }
  if (object.getChannel() != 0) said << "c" << int(object.getChannel());
  if (object.getPhraseBegin() != 0) said << "{";
  if (object.getPhraseEnd() != 0) said << "}";
  return said.str();
}

class KernUnderTest {
 public:
  /// The objects of a text, apart by blanks; what was said meanwhile goes to `messages`.
  std::string read(const std::string& text) { return readFile(folder.put("a.krn", text)); }
  std::string readFile(const std::string& path) {
    deleteZQKernTrackList(list);
    list = createZQKernTrackList();
    EXPECT_TRUE(list->init());
    ZQKernFile file;
    file.readKernObjectsFromFileWithPath(list, path.c_str());
    messages = captured.take();
    std::string said;
    for (const ZQKernObject* object : *list->getKernObjectTrackAtIndex(0)) said += (said.empty() ? "" : " ") + sayObject(*object);
    return said;
  }
  ~KernUnderTest() { deleteZQKernTrackList(list); }

  TestFolder folder;
  CapturedMessages captured{5};
  ZQKernTrackList* list = nullptr;
  std::string messages;
};

}  // namespace zmatrix
