// MorceauxEnParallele: the helper's loop and the hand-over of odd pieces.
#include "cli/MorceauxEnParallele.h"

#include <utility>

MorceauxEnParallele::MorceauxEnParallele(size_t nombre, Formate formate)
    : nombre_(nombre),
      formate_(std::move(formate)),
      aide_([this](const std::stop_token& arret) { Aide(arret); }) {}

void MorceauxEnParallele::Aide(const std::stop_token& arret) {
  try {
    for (size_t morceau = 1; morceau < nombre_ && !arret.stop_requested(); morceau += 2) {
      Case& c = CaseDe(morceau);
      {
        std::unique_lock<std::mutex> garde(verrou_);
        if (!signal_.wait(garde, arret, [&c] { return !c.pleine; })) return;
      }
      c.octets.clear();  // the buffer is the helper's alone until it is marked full
      formate_(morceau, c.octets);
      {
        const std::lock_guard<std::mutex> garde(verrou_);
        c.pleine = true;
      }
      signal_.notify_all();
    }
  } catch (...) {
    {
      const std::lock_guard<std::mutex> garde(verrou_);
      echec_ = std::current_exception();
    }
    signal_.notify_all();
  }
}

void MorceauxEnParallele::EcritImpair(size_t morceau,
                                      const std::function<void(std::string_view)>& ecrit) {
  Case& c = CaseDe(morceau);
  {
    std::unique_lock<std::mutex> garde(verrou_);
    signal_.wait(garde, [&] { return c.pleine || echec_; });
    if (!c.pleine) std::rethrow_exception(echec_);
  }
  ecrit(c.octets);
  {
    const std::lock_guard<std::mutex> garde(verrou_);
    c.pleine = false;
  }
  signal_.notify_all();
}
