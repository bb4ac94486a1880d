// MorceauxEnParallele: an output made of numbered pieces, formatted on two threads and written
// in order. The calling thread formats the even pieces itself as it writes them; a helper thread
// formats the odd ones ahead, into two buffers taken in turn, so the memory taken stays two
// pieces whatever the output's size. Formatting is most of the cost of a large JSON map, and a
// second core halves it.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

class MorceauxEnParallele {
 public:
  // Appends piece `morceau` to `sortie`. Called on both threads, for different pieces.
  using Formate = std::function<void(size_t morceau, std::string& sortie)>;

  // Starts the helper, which begins with piece 1 at once.
  MorceauxEnParallele(size_t nombre, Formate formate);
  // Stops the helper once it has finished the piece in hand, and waits for it.
  ~MorceauxEnParallele() = default;
  MorceauxEnParallele(const MorceauxEnParallele&) = delete;
  MorceauxEnParallele& operator=(const MorceauxEnParallele&) = delete;

  // Piece `morceau`, which must be the next odd one: waits for the helper, hands the piece to
  // `ecrit` and gives the buffer back. What the helper raised is raised here.
  void EcritImpair(size_t morceau, const std::function<void(std::string_view)>& ecrit);

 private:
  struct Case {
    std::string octets;
    bool pleine = false;
  };
  Case& CaseDe(size_t morceau) { return cases_[(morceau / 2) % 2]; }
  void Aide(const std::stop_token& arret);

  const size_t nombre_;
  const Formate formate_;
  std::mutex verrou_;
  std::condition_variable_any signal_;
  Case cases_[2];
  std::exception_ptr echec_;
  std::jthread aide_;  // last: started once everything above is built
};
