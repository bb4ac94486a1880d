// VecteurBrut: a vector whose new elements are left uninitialised, for room that is written in
// full before it is read (a sort's scratch buffer, reports appended one by one). Sizing one
// claims memory without writing it: a fresh page is zeroed by the system once, not twice.
#pragma once

#include <memory>
#include <utility>
#include <vector>

template <class T>
class AllocateurBrut : public std::allocator<T> {
 public:
  using std::allocator<T>::allocator;

  template <class U>
  void construct(U* p) noexcept {
    ::new (static_cast<void*>(p)) U;  // default-initialised: nothing written for a plain struct
  }
  template <class U, class... Arguments>
  void construct(U* p, Arguments&&... arguments) {
    ::new (static_cast<void*>(p)) U(std::forward<Arguments>(arguments)...);
  }
};

template <class T>
using VecteurBrut = std::vector<T, AllocateurBrut<T>>;
