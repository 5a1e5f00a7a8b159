// A pointer to a number of a class, whatever its width: what tables of fields are made of.
#pragma once

#include <type_traits>

namespace zmatrix {

/// Points to an int, an unsigned int or a long long of `Owner`, or to none.
template <class Owner>
class NumberMember {
 public:
  constexpr NumberMember() = default;
  constexpr NumberMember(int Owner::*member) : plain(member) {}
  constexpr NumberMember(unsigned int Owner::*member) : withoutSign(member) {}
  constexpr NumberMember(long long Owner::*member) : wide(member) {}

  /// The member as the plain int that all settings are.
  constexpr int Owner::*asInt() const { return plain; }
  constexpr bool operator==(const NumberMember&) const = default;

  /// Calls `use` with a reference to the number of `object`, whose class may be a base class of Owner that has the member.
  template <class Object, class Use>
  void visit(Object& object, Use use) const {
    using Class = std::remove_const_t<Object>;
    if (plain != nullptr) use(object.*static_cast<int Class::*>(plain));
    if (withoutSign != nullptr) use(object.*static_cast<unsigned int Class::*>(withoutSign));
    if (wide != nullptr) use(object.*static_cast<long long Class::*>(wide));
  }

 private:
  int Owner::*plain = nullptr;
  unsigned int Owner::*withoutSign = nullptr;
  long long Owner::*wide = nullptr;
};

}  // namespace zmatrix
