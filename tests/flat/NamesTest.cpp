// The list of the boundary against the library: what has landed is there, and nothing else.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <zmatrix/BBMatrix.h>

#include <iterator>
#include <map>
#include <sstream>
#include <string>

namespace {

struct ListedName {
  const char* name;
  const char* capability;
  bool hasLanded;
  bool isThere = false;
};

const ListedName listedNames[] = {
#define LISTED_NAME(name, capability, hasLanded) {#name, capability, hasLanded != 0},
#define LISTED_FAMILY(name, groups)
#define LISTED_METHOD(name, capability, hasLanded)
#include "listed_names.inc"
};

const char* const groupsOfFamilies[] = {
#define LISTED_NAME(name, capability, hasLanded)
#define LISTED_FAMILY(name, groups) groups,
#define LISTED_METHOD(name, capability, hasLanded)
#include "listed_names.inc"
};

/// The compiler says of each method whether the class has it.
const ListedName listedMethods[] = {
#define LISTED_NAME(name, capability, hasLanded)
#define LISTED_FAMILY(name, groups)
#define LISTED_METHOD(name, capability, hasLanded)                \
  {#name, capability, hasLanded != 0, []<class Facade>(Facade*) { \
     return requires {                                            \
       &Facade::name;                                             \
     };                                                           \
   }(static_cast<BBMatrix*>(nullptr))},
#include "listed_names.inc"
};

}  // namespace

TEST(FlatNamesTest, WhatHasLandedIsInTheLibraryAndNothingElse) {
  for (const ListedName& listed : listedNames) {
    EXPECT_EQ(dlsym(RTLD_DEFAULT, listed.name) != nullptr, listed.hasLanded) << listed.name << " of " << listed.capability;
  }
}

TEST(FlatNamesTest, TheFacadeHasWhatHasLandedAndNothingElse) {
  for (const ListedName& method : listedMethods) {
    EXPECT_EQ(method.isThere, method.hasLanded) << method.name << " of " << method.capability;
  }
  EXPECT_EQ(std::size(listedMethods), 145u);
}

TEST(FlatNamesTest, TheFamiliesAreComplete) {
  std::map<std::string, int> count;
  for (const char* groupsOfFamily : groupsOfFamilies) {
    std::istringstream groups(groupsOfFamily);
    for (std::string group; groups >> group;) ++count[group];
  }
  const std::map<std::string, int> expected = {{"FMB", 108},   {"FM", 258},   {"F", 84},   {"B", 1},
                                               {"vector", 22}, {"names", 16}, {"info", 7}, {"element", 6}};
  EXPECT_EQ(count, expected);
  // A family has a function in each of its tiers; those on elements alone have one each, as have vectors and file names.
  int prefixed = 0;
  for (const ListedName& listed : listedNames) prefixed += std::string(listed.name).rfind("s_", 0) == 0;
  const int withoutObject = 5;  // s_Malloc, s_Free, s_printf, s_flushStdOut, s_getMatrixInfoTypeFromFile
  EXPECT_EQ(prefixed, 108 * 3 + 258 * 2 + 84 + 1 + 22 + 16 + 2 + withoutObject);
}
