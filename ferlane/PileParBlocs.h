// PileParBlocs: a stack whose elements never move. They live in blocks of a fixed count, claimed
// as the stack grows and kept when it shrinks: a stack that goes up and down around a block's
// edge (the open elements of a page) claims nothing more, and a stack of a million (a hostile
// document's nesting) grows without the copy, and the moment of two copies, of a vector's growth.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

template <class T, size_t kParBloc = 64>
class PileParBlocs {
  static_assert((kParBloc & (kParBloc - 1)) == 0, "a power of two");

 public:
  PileParBlocs() = default;
  PileParBlocs(const PileParBlocs&) = delete;
  PileParBlocs& operator=(const PileParBlocs&) = delete;
  ~PileParBlocs() {
    while (taille_ > 0) pop_back();
  }

  template <class... Arguments>
  T& emplace_back(Arguments&&... arguments) {
    if (taille_ == blocs_.size() * kParBloc) blocs_.push_back(std::make_unique<Case[]>(kParBloc));
    Case& place = blocs_[taille_ / kParBloc][taille_ % kParBloc];
    sommet_ = ::new (static_cast<void*>(&place)) T(std::forward<Arguments>(arguments)...);
    ++taille_;
    return *sommet_;
  }
  void push_back(const T& x) { emplace_back(x); }
  void pop_back() {
    std::destroy_at(sommet_);
    --taille_;
    sommet_ = taille_ > 0 ? Element(taille_ - 1) : nullptr;
  }

  T& operator[](size_t i) { return *Element(i); }
  const T& operator[](size_t i) const { return *Element(i); }
  T& back() { return *sommet_; }
  T& front() { return *Element(0); }
  const T& front() const { return *Element(0); }
  size_t size() const { return taille_; }
  bool empty() const { return taille_ == 0; }

 private:
  struct alignas(T) Case {
    std::byte octets[sizeof(T)];
  };
  T* Element(size_t i) const {
    return std::launder(reinterpret_cast<T*>(&blocs_[i / kParBloc][i % kParBloc]));
  }

  std::vector<std::unique_ptr<Case[]>> blocs_;
  size_t taille_ = 0;
  T* sommet_ = nullptr;  // the last element: the walks read it at every step
};
