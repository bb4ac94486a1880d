// ListeC and ListeT: the core layer's growable lists. Indexing is checked: an index outside
// the list raises exceptions::LanceIndexHorsBorne. ListeC holds plain values (strings); ListeT
// holds objects derived from Objet. Both keep their elements in insertion order.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "ferlane/Exceptions.h"

template <class T>
class ListeDeBase {
 public:
  ListeDeBase() = default;
  ListeDeBase(std::initializer_list<T> elements) : elements_(elements) {}

  uint64_t Nombre() const { return elements_.size(); }
  bool EstVide() const { return elements_.empty(); }
  void Ajoute(T element) { elements_.push_back(std::move(element)); }
  void Vide() { elements_.clear(); }

  T& operator[](uint64_t index) {
    Verifie(index);
    return elements_[index];
  }
  const T& operator[](uint64_t index) const {
    Verifie(index);
    return elements_[index];
  }

  auto begin() { return elements_.begin(); }
  auto end() { return elements_.end(); }
  auto begin() const { return elements_.begin(); }
  auto end() const { return elements_.end(); }

 private:
  void Verifie(uint64_t index) const {
    if (index >= elements_.size()) throw exceptions::LanceIndexHorsBorne(index, elements_.size());
  }

  std::vector<T> elements_;
};

template <class T>
class ListeC : public ListeDeBase<T> {
  using ListeDeBase<T>::ListeDeBase;
};

template <class T>
class ListeT : public ListeDeBase<T> {
  using ListeDeBase<T>::ListeDeBase;
};
