// The brute-force reference model of one converter step.
#include "ModeleDeChaine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace {

struct Garde {
  uint64_t debut, fin;
  const Rapport* rapport;
};

}  // namespace

SortieNaive AppliqueRapportsNaif(std::u16string_view entree, const std::vector<uint32_t>& anciens,
                                 const std::vector<Rapport>& rapports) {
  const uint64_t n = entree.size();
  const auto valide = [&](const Rapport& r) {
    return r.intervalle.Debut <= r.intervalle.Fin && r.intervalle.Fin <= n;
  };

  // Non-empty replacements by start, the longer first, then report order; each keeps the
  // positions nobody took before it.
  std::vector<size_t> ordre;
  for (size_t k = 0; k < rapports.size(); ++k)
    if (!rapports[k].estMarque && valide(rapports[k]) &&
        rapports[k].intervalle.Debut < rapports[k].intervalle.Fin)
      ordre.push_back(k);
  std::stable_sort(ordre.begin(), ordre.end(), [&](size_t a, size_t b) {
    const auto &ia = rapports[a].intervalle, &ib = rapports[b].intervalle;
    return ia.Debut != ib.Debut ? ia.Debut < ib.Debut : ia.Fin > ib.Fin;
  });
  std::vector<bool> pris(n, false);
  std::vector<Garde> gardes;
  for (size_t k : ordre) {
    const Rapport& r = rapports[k];
    uint64_t debut = r.intervalle.Debut;
    while (debut < r.intervalle.Fin && pris[debut]) ++debut;
    if (debut == r.intervalle.Fin) continue;
    for (uint64_t p = debut; p < r.intervalle.Fin; ++p) {
      EXPECT_FALSE(pris[p]) << "the positions left to a replacement are not a suffix";
      pris[p] = true;
    }
    gardes.push_back({debut, r.intervalle.Fin, &r});
  }

  std::vector<uint32_t> bits(n, 0);
  for (const Rapport& r : rapports)
    if (r.estMarque && valide(r))
      for (uint64_t p = r.intervalle.Debut; p < r.intervalle.Fin; ++p) bits[p] |= r.styles;
  const auto stylesA = [&](uint64_t p) { return (anciens.empty() ? 0 : anciens[p]) | bits[p]; };

  SortieNaive sortie;
  sortie.versSortie.assign(n + 1, 0);
  const auto ecrit = [&](std::u16string_view texte, MapPos::Intervalle source, uint32_t styles,
                         MapPos::Attributs attributs, bool inchange, bool insere) {
    for (char16_t c : texte) {
      sortie.texte += c;
      sortie.styles.push_back(styles);
      sortie.sources.push_back(source);
      sortie.attributs.push_back(attributs);
      sortie.inchange.push_back(inchange);
      sortie.insere.push_back(insere);
    }
  };
  // By position: the insertions there in report order, whether a kept replacement covers it
  // strictly inside, and the kept replacement that starts there.
  std::vector<std::vector<const Rapport*>> insertions(n + 1);
  for (const Rapport& r : rapports)
    if (!r.estMarque && valide(r) && r.intervalle.Debut == r.intervalle.Fin)
      insertions[r.intervalle.Debut].push_back(&r);
  std::vector<bool> dedans(n + 1, false);
  std::vector<const Garde*> gardeA(n + 1, nullptr);
  for (const Garde& g : gardes) {
    gardeA[g.debut] = &g;
    for (uint64_t p = g.debut + 1; p < g.fin; ++p) dedans[p] = true;
  }
  for (uint64_t p = 0; p <= n;) {
    for (const Rapport* r : insertions[p]) {
      if (dedans[p]) continue;
      const uint32_t styles = p > 0 && p < n ? stylesA(p - 1) & stylesA(p) : 0;
      ecrit(r->texte.Vue(), {uint32_t(p), uint32_t(p)}, styles, r->attributs, false, true);
    }
    if (p == n) {
      sortie.versSortie[n] = sortie.texte.size();
      break;
    }
    const Garde* garde = gardeA[p];
    if (garde != nullptr) {
      uint32_t styles = ~0u;
      for (uint64_t q = garde->debut; q < garde->fin; ++q) {
        styles &= stylesA(q);
        sortie.versSortie[q] = sortie.texte.size();
      }
      ecrit(garde->rapport->texte.Vue(), {uint32_t(garde->debut), uint32_t(garde->fin)}, styles,
            garde->rapport->attributs, false, false);
      p = garde->fin;
    } else {
      sortie.versSortie[p] = sortie.texte.size();
      ecrit(entree.substr(p, 1), {uint32_t(p), uint32_t(p + 1)}, stylesA(p), {}, true, false);
      ++p;
    }
  }
  return sortie;
}

void ConvertisseurRejoue::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                   const FonctionRemplace& remplace,
                                                   const FonctionMarque& marque) {
  dernierTexte_ = texte.Chaine().Texte();
  for (const Rapport& r : rapports_) {
    if (r.estMarque)
      marque(r.intervalle, r.styles);
    else
      remplace(r.intervalle, r.texte, r.attributs);
  }
}

Rapport R(uint32_t debut, uint32_t fin, std::u16string_view texte, MapPos::Attributs attributs) {
  return Rapport{false, {debut, fin}, ChaineN(texte), attributs, 0};
}

Rapport M(uint32_t debut, uint32_t fin, uint32_t styles) {
  return Rapport{true, {debut, fin}, ChaineN(), {}, styles};
}

std::string DecritMap(const std::vector<SegmentDeMap>& segments) {
  std::string sortie;
  for (const SegmentDeMap& s : segments) {
    if (!sortie.empty()) sortie += ' ';
    sortie += (s.Identite ? "=[" : "[") + std::to_string(s.DebutInterne) + "," +
              std::to_string(s.FinInterne) + ")[" + std::to_string(s.DebutExterne) + "," +
              std::to_string(s.FinExterne) + ")";
    if (!s.Identite)
      sortie += "{" + std::to_string(s.Attributs.CaractereSpecial) + "," +
                std::to_string(s.Attributs.Remplacable) + "}";
  }
  return sortie;
}

std::string DecritStyles(const TexteAvecAttributs& texte) {
  std::string sortie;
  for (uint64_t p = 0; p < texte.Longueur(); ++p)
    sortie += (p ? " " : "") + std::to_string(texte.Attribut(p));
  return sortie;
}
