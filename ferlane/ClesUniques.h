// ClesUniques: the compile-time check that a constant table has no two entries with the same
// key, for the tables looked up by key or tried in order (a second entry would never be found).
#pragma once

#include <cstddef>

template <class T, std::size_t N, class Cle>
constexpr bool ClesUniques(const T (&table)[N], Cle cle) {
  for (std::size_t i = 0; i < N; ++i)
    for (std::size_t j = i + 1; j < N; ++j)
      if (cle(table[i]) == cle(table[j])) return false;
  return true;
}
