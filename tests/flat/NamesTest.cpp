// The lists of the C interface compared with the library: it has the names of landed capabilities and no others.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <zmatrix/BBMatrix.h>

namespace {

struct ListedName {
  const char* name;
  const char* capability;
  bool hasLanded;
  bool isThere = false;
};

const ListedName listedNames[] = {
#define LISTED_NAME(name, capability, hasLanded) {#name, capability, hasLanded != 0},
#define LISTED_METHOD(name, capability, hasLanded)
#include "listed_names.inc"
};

/// Whether the class has a method is decided at compile time.
const ListedName listedMethods[] = {
#define LISTED_NAME(name, capability, hasLanded)
#define LISTED_METHOD(name, capability, hasLanded)                \
  {#name, capability, hasLanded != 0, []<class Facade>(Facade*) { \
     return requires {                                            \
       &Facade::name;                                             \
     };                                                           \
   }(static_cast<BBMatrix*>(nullptr))},
#include "listed_names.inc"
};

}  // namespace

TEST(FlatNamesTest, TheLibraryHasTheLandedNamesOnly) {
  for (const ListedName& listed : listedNames) {
    EXPECT_EQ(dlsym(RTLD_DEFAULT, listed.name) != nullptr, listed.hasLanded) << listed.name << " of " << listed.capability;
  }
}

TEST(FlatNamesTest, TheFacadeHasTheLandedMethodsOnly) {
  for (const ListedName& method : listedMethods) {
    EXPECT_EQ(method.isThere, method.hasLanded) << method.name << " of " << method.capability;
  }
}
