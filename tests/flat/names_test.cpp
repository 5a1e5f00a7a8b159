// The list of the boundary against the library: what has landed is there, what has not is told with its capability.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <zmatrix/BBMatrix.h>

#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct ListedName {
  const char* name;
  const char* capability;
  bool hasLanded;
};

struct ListedFamily {
  const char* name;
  const char* groups;
};

const std::vector<ListedName>& listedNames() {
  static const std::vector<ListedName> names = {
#define LISTED_NAME(name, capability, hasLanded) {#name, capability, hasLanded != 0},
#define LISTED_FAMILY(name, groups)
#define LISTED_METHOD(name, capability, hasLanded)
#include "listed_names.inc"
  };
  return names;
}

const std::vector<ListedFamily>& listedFamilies() {
  static const std::vector<ListedFamily> families = {
#define LISTED_NAME(name, capability, hasLanded)
#define LISTED_FAMILY(name, groups) {#name, groups},
#define LISTED_METHOD(name, capability, hasLanded)
#include "listed_names.inc"
  };
  return families;
}

struct ListedMethod {
  ListedName listed;
  bool isThere;
};

/// The compiler says of each method whether the class has it.
const std::vector<ListedMethod>& listedMethods() {
  static const std::vector<ListedMethod> methods = {
#define LISTED_NAME(name, capability, hasLanded)
#define LISTED_FAMILY(name, groups)
#define LISTED_METHOD(name, capability, hasLanded)                  \
  {{#name, capability, hasLanded != 0}, []<class Facade>(Facade*) { \
     return requires {                                              \
       &Facade::name;                                               \
     };                                                             \
   }(static_cast<BBMatrix*>(nullptr))},
#include "listed_names.inc"
  };
  return methods;
}

using NamesByCapability = std::map<std::string, std::vector<std::string>>;

void print(const char* heading, const NamesByCapability& names) {
  for (const auto& [capability, list] : names) {
    std::cout << heading << " (" << capability << ", " << list.size() << "):";
    for (const std::string& name : list) std::cout << ' ' << name;
    std::cout << '\n';
  }
}

/// Sorts what is listed by what is there; what has landed and nothing else may be.
class Completeness {
 public:
  void add(const ListedName& listed, bool isThere) {
    if (listed.hasLanded && !isThere) missing[listed.capability].push_back(listed.name);
    if (!listed.hasLanded && isThere) early[listed.capability].push_back(listed.name);
    if (!listed.hasLanded && !isThere) stillToCome[listed.capability].push_back(listed.name);
  }
  void tell() const {
    print("still to come", stillToCome);
    print("missing", missing);
    print("there, though its capability has not landed", early);
    EXPECT_TRUE(missing.empty());
    EXPECT_TRUE(early.empty());
  }

 private:
  NamesByCapability missing, early, stillToCome;
};

}  // namespace

TEST(FlatNames, WhatHasLandedIsInTheLibraryAndNothingElse) {
  Completeness completeness;
  for (const ListedName& listed : listedNames()) completeness.add(listed, dlsym(RTLD_DEFAULT, listed.name) != nullptr);
  completeness.tell();
}

TEST(FlatNames, TheFacadeHasWhatHasLandedAndNothingElse) {
  Completeness completeness;
  for (const ListedMethod& method : listedMethods()) completeness.add(method.listed, method.isThere);
  completeness.tell();
  EXPECT_EQ(listedMethods().size(), 145u);
}

TEST(FlatNames, TheFamiliesAreComplete) {
  std::map<std::string, int> count;
  for (const ListedFamily& family : listedFamilies()) {
    std::istringstream groups(family.groups);
    for (std::string group; groups >> group;) ++count[group];
  }
  const std::map<std::string, int> expected = {{"FMB", 108},   {"FM", 258},   {"F", 84},   {"B", 1},
                                               {"vector", 22}, {"names", 16}, {"info", 7}, {"element", 6}};
  EXPECT_EQ(count, expected);
  // A family has a function in each of its tiers; those on elements alone have one each, as have vectors and file names.
  int prefixed = 0;
  for (const ListedName& listed : listedNames()) prefixed += std::string(listed.name).rfind("s_", 0) == 0;
  const int withoutObject = 5;  // s_Malloc, s_Free, s_printf, s_flushStdOut, s_getMatrixInfoTypeFromFile
  EXPECT_EQ(prefixed, 108 * 3 + 258 * 2 + 84 + 1 + 22 + 16 + 2 + withoutObject);
}
