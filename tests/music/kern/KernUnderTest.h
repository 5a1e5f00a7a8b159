// Reads kern texts and writes the objects and messages as texts for comparison.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "music/kern/ZQKernFile.h"
#include "support/CapturedMessages.h"
#include "support/TestFolder.h"

namespace zmatrix {

/// A kern text from lines of tokens separated by blanks; "_" is a blank within a token.
inline std::string kern(const std::string& records) {
  std::string text = records;
  for (char& character : text) character = character == ' ' ? '\t' : character == '_' ? ' ' : character;
  return text + "\n";
}

inline std::string textOfObject(const ZQKernObject& object) {
  std::ostringstream text;
  const std::string time = std::to_string(object.getTimeQuanta()) + ":";
  switch (object.getType()) {
    case ZQKernObjectNoteOn:
      text << "n" << time << int(object.getNoteNumber()) << "+" << object.getDuration();
      break;
    case ZQKernObjectNoteOff:
      text << "o" << time << int(object.getNoteNumber());
      break;
    case ZQKernObjectTimeSignature:
      text << "M" << time << object.getTimeSignatureNom() << "/" << object.getTimeSignatureDenom();
      break;
    case ZQKernObjectKeySignature:
      text << "k" << time << object.getKeySignature(nullptr);
      break;
    case ZQKernObjectTempo:
      text << "T" << time << object.getTempo();
      break;
    default:
      text << "#" << time << object.getBuffer();
  }
  if (object.getChannel() != 0) text << "c" << int(object.getChannel());
  if (object.getPhraseBegin() != 0) text << "{";
  if (object.getPhraseEnd() != 0) text << "}";
  return text.str();
}

class KernUnderTest {
 public:
  /// The objects of a text, separated by blanks; the messages of the read are in `messages`.
  std::string read(const std::string& score) { return readFile(folder.put("a.krn", score)); }
  std::string readFile(const std::string& path) {
    deleteZQKernTrackList(list);
    list = createZQKernTrackList();
    EXPECT_TRUE(list->init());
    ZQKernFile file;
    file.readKernObjectsFromFileWithPath(list, path.c_str());
    messages = captured.take();
    std::string text;
    for (const ZQKernObject* object : *list->getKernObjectTrackAtIndex(0))
      text += (text.empty() ? "" : " ") + textOfObject(*object);
    return text;
  }
  ~KernUnderTest() { deleteZQKernTrackList(list); }

  TestFolder folder;
  CapturedMessages captured{5};
  ZQKernTrackList* list = nullptr;
  std::string messages;
};

}  // namespace zmatrix
