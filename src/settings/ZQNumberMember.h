// A pointer to a number member of a class, for tables of fields whose members have different types.
#pragma once

#include <type_traits>

namespace zmatrix {

/// Points to an int, an unsigned int or a long long of `Owner`, or to none.
template <class Owner>
class NumberMember {
 public:
  constexpr NumberMember() = default;
  constexpr NumberMember(int Owner::*member) : plain_(member) {}
  constexpr NumberMember(unsigned int Owner::*member) : withoutSign_(member) {}
  constexpr NumberMember(long long Owner::*member) : wide_(member) {}

  /// The pointer to an int, as all settings are; null if the member has another type.
  constexpr int Owner::*asInt() const { return plain_; }
  constexpr bool operator==(const NumberMember&) const = default;

  /// Calls `use` with a reference to the member of `object`. Its class may be a base class of Owner that has the member. Does
  /// nothing for a null pointer.
  template <class Object, class Use>
  void visit(Object& object, Use use) const {
    using Class = std::remove_const_t<Object>;
    if (plain_ != nullptr) use(object.*static_cast<int Class::*>(plain_));
    if (withoutSign_ != nullptr) use(object.*static_cast<unsigned int Class::*>(withoutSign_));
    if (wide_ != nullptr) use(object.*static_cast<long long Class::*>(wide_));
  }

 private:
  int Owner::*plain_ = nullptr;
  unsigned int Owner::*withoutSign_ = nullptr;
  long long Owner::*wide_ = nullptr;
};

}  // namespace zmatrix
