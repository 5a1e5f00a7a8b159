// Lists of file names: ownership, kinds of files, walks through folders.
#include "music/ZQFileNameList.h"

#include <gtest/gtest.h>

#include "frame/ZQMemory.h"
#include "support/KeptText.h"

using zmatrix::systemFree;
using zmatrix::systemMallocArray;

namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

char* newName(const std::string& name) {
  char* text = systemMallocArray<char>(static_cast<long long>(name.size()) + 1);
  return strcpy(text, name.c_str());
}

Names namesOf(const ZQFileNameList* list) {
  Names names;
  for (int i = 0; i < list->getCount(); i++) names.emplace_back(list->getFileNameAtIndex(i));
  return names;
}

class FileNameWalkTest : public testing::Test {
 public:
  void put(const std::string& name) { folder.put(name, "x"); }

  /// The names that a walk finds, relative to the root.
  template <class Operation>
  Names walk(Operation operation, int recursive) {
    ZQFileNameList* throwaway = createZQFileNameList();
    ZQFileNameList* list = (throwaway->*operation)(root.c_str(), recursive, nullptr);
    deleteZQFileNameList(throwaway);
    Names names = namesOf(list);
    for (std::string& name : names) name = name.substr(root.string().size() + 1);
    deleteZQFileNameList(list);
    return names;
  }

  zmatrix::TestFolder folder;
  const fs::path root = folder.path();
};

TEST(FileNameListTest, OwnsItsNames) {
  ZQFileNameList* list = createZQFileNameList();
  Names expected;
  for (int i = 0; i < 100; i++) {
    expected.push_back("name" + std::to_string(i));
    list->addFileName(newName(expected.back()));
  }
  list->addFileName(nullptr);
  EXPECT_EQ(namesOf(list), expected);
  for (int i : {99, 50, 0}) {
    list->deleteFileNameAtIndex(i);
    expected.erase(expected.begin() + i);
  }
  list->deleteFileNameAtIndex(-1);
  list->deleteFileNameAtIndex(97);
  EXPECT_EQ(namesOf(list), expected);
  EXPECT_EQ(list->getFileNameAtIndex(-1), nullptr);
  EXPECT_EQ(list->getFileNameAtIndex(97), nullptr);
  list->deleteAllFileNames();
  EXPECT_EQ(list->getCount(), 0);
  char* name = newName("a");
  list->addFileName(name);
  list->init();
  EXPECT_EQ(list->getCount(), 0);
  EXPECT_STREQ(name, "a") << "init() doesn't free the names";
  systemFree(name);
  char* kept = newName("kept");
  list->addFileName(kept);
  deleteZQFileNameListOnlyReferences(list);
  EXPECT_STREQ(kept, "kept");
  systemFree(kept);
  deleteZQFileNameList(nullptr);
  deleteZQFileNameListOnlyReferences(nullptr);
}

TEST(FileNameListTest, RecognisesFilesByTheirSuffix) {
  const ZQFileNameList list;
  zmatrix::expectKeptCases("file_suffixes.txt", [&list](const std::string& name) {
    return std::string(list.getFileSuffix(name.c_str())) + " midi " + std::to_string(list.fileIsMidiFile(name.c_str())) +
           " kern " + std::to_string(list.fileIsKernFile(name.c_str())) + " text " +
           std::to_string(list.fileIsTextFile(name.c_str()));
  });
  EXPECT_STREQ(list.getFileSuffix(""), "");
  EXPECT_STREQ(list.getFileSuffix(nullptr), "");
  EXPECT_EQ(list.fileIsTextFile(nullptr), 0);
}

TEST_F(FileNameWalkTest, CollectsByKindInReverseOrder) {
  for (const char* name : {"a.txt", "b.mid", "c.krn", "d.TXT", "e.Txt", "sub/f.txt", "sub/g.krn", "sub/h/i.txt", "j.txt/k.txt"})
    put(name);
  const auto text = &ZQFileNameList::getTextFilesInFilePath;
  EXPECT_EQ(walk(text, 0), (Names{"d.TXT", "a.txt"}));
  EXPECT_EQ(walk(text, 1), (Names{"sub/h/i.txt", "sub/f.txt", "j.txt/k.txt", "d.TXT", "a.txt"}));
  EXPECT_EQ(walk(&ZQFileNameList::getMidiFilesInFilePath, 1), (Names{"b.mid"}));
  EXPECT_EQ(walk(&ZQFileNameList::getKernFilesInFilePath, 1), (Names{"sub/g.krn", "c.krn"}));
  EXPECT_EQ(walk(&ZQFileNameList::getMidiOrKernFilesInFilePath, 0), (Names{"c.krn", "b.mid"}));
}

TEST_F(FileNameWalkTest, TakesASingleFileAndAddsToAList) {
  put("a.txt");
  const ZQFileNameList throwaway;
  ZQFileNameList* list = throwaway.getTextFilesInFilePath((root / "a.txt").c_str(), 0, nullptr);
  EXPECT_EQ(throwaway.getTextFilesInFilePath((root.string() + "/").c_str(), 0, list), list);
  EXPECT_EQ(namesOf(list), Names(2, (root / "a.txt").string()));  // without a double slash
  EXPECT_EQ(throwaway.getTextFilesInFilePath(nullptr, 0, list), list);
  EXPECT_EQ(throwaway.getTextFilesInFilePath((root / "absent").c_str(), 1, list)->getCount(), 2);
  deleteZQFileNameList(list);

  ZQFileNameList* empty = throwaway.getKernFilesInFilePath(root.c_str(), 1, nullptr);
  EXPECT_EQ(empty->getCount(), 0);
  deleteZQFileNameList(empty);
  EXPECT_EQ(throwaway.getDirectoryContent((root / "a.txt").c_str()), nullptr);
  EXPECT_EQ(throwaway.getDirectoryContent(nullptr), nullptr);
  EXPECT_EQ(throwaway.isDirectory(root.c_str()), 1);
  EXPECT_EQ(throwaway.isDirectory((root / "a.txt").c_str()), 0);
  EXPECT_EQ(throwaway.isDirectory("/dev/null"), -1);
  EXPECT_EQ(throwaway.isDirectory((root / "absent").c_str()), -1);
}

TEST_F(FileNameWalkTest, EndsInATreeWithCycles) {
  put("a.txt");
  put("sub/b.txt");
  fs::create_directory_symlink(root, root / "loop1");
  fs::create_directory_symlink(root, root / "loop2");
  fs::create_directory_symlink("..", root / "sub/up");
  fs::create_directory_symlink("self", root / "self");
  fs::create_directory_symlink(root / "sub", root / "twin");
  EXPECT_EQ(walk(&ZQFileNameList::getTextFilesInFilePath, 1), (Names{"twin/b.txt", "sub/b.txt", "a.txt"}));
}

TEST_F(FileNameWalkTest, AcceptsPathsOfAnyLength) {
  std::string deep = root.string();
  for (int i = 0; i < 12; i++) {  // a path of more than 1,024 bytes
    deep += "/" + std::string(100, 'd');
    fs::create_directory(deep);
  }
  std::ofstream(deep + "/a.txt") << "x";
  EXPECT_EQ(walk(&ZQFileNameList::getTextFilesInFilePath, 1).size(), 1u);
  const ZQFileNameList list;
  EXPECT_EQ(list.isDirectory(std::string(100000, 'x').c_str()), -1);
}

}  // namespace
