// VerbatimLaTeX: one walk from backslash to backslash (and "%" to end of line), with one
// remembered search a closing \end{name} so that unclosed environments keep the walk linear.
// The walk stops only where something may open: a "%", or a backslash before a letter that
// starts "begin" or an inline command's name; every other command is passed sixteen units at
// a time.
#include "latex/VerbatimLaTeX.h"

#include <algorithm>
#include <deque>

#include "ferlane/ProchaineOccurrence.h"
#include "ferlane/UnitesSSE2.h"

namespace {

bool EstLettre(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}
bool EstBlancDeLigne(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\r';
}

// A position found, or kPasTrouve when it lies at or past `fin` (on a later line).
uint64_t AvantLaFin(uint64_t position, uint64_t fin) {
  return position < fin ? position : kPasTrouve;
}

// Inline verbatim commands and what comes between the name and the delimiter: "*" an optional
// star, "o" an optional bracket argument, "m" a brace argument.
struct CommandeVerbatim {
  std::u16string_view nom;
  std::u16string_view avant;
  bool accolades;  // "{...}" may stand for the delimited code
};
constexpr CommandeVerbatim kCommandesVerbatim[] = {
    {u"verb", u"*", false},
    {u"lstinline", u"o", true},
    {u"mintinline", u"om", true},
};

// The letters after a backslash where the walk has a name to read: "b" for \begin, and the first
// letters of the inline commands.
constexpr char16_t kInitiales[4] = {u'b', u'v', u'l', u'm'};
static_assert(std::ranges::all_of(kCommandesVerbatim, [](const CommandeVerbatim& c) {
  return std::ranges::find(kInitiales, c.nom[0]) != std::end(kInitiales);
}));

bool EstInitiale(char16_t c) {
  return std::ranges::find(kInitiales, c) != std::end(kInitiales);
}

// The first position p >= debut holding a "%", or a backslash followed by one of kInitiales;
// kPasTrouve when there is none.
uint64_t ProchainArret(std::u16string_view texte, uint64_t debut) {
  uint64_t p = debut;
#if defined(__SSE2__)
  // Sixteen units a step narrowed to bytes (a unit beyond 0xFF becomes 0 or 0xFF, none of those
  // looked for), each compared with its follower (loaded one unit further on).
  const __m128i pourcent = _mm_set1_epi16(u'%');
  const __m128i barre = _mm_set1_epi16(u'\\');
  const UnitesParmi initiale({kInitiales, std::size(kInitiales)});
  const auto arrets = [&](uint64_t q) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(texte.data() + q));
    const __m128i suivantes =
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(texte.data() + q + 1));
    return _mm_or_si128(_mm_cmpeq_epi16(v, pourcent),
                        _mm_and_si128(_mm_cmpeq_epi16(v, barre), initiale(suivantes)));
  };
  const __m128i pourcent8 = _mm_set1_epi8('%');
  const __m128i barre8 = _mm_set1_epi8('\\');
  const OctetsParmi initiale8({kInitiales, std::size(kInitiales)});
  const auto octets = [&](uint64_t q) {
    const auto* bloc = reinterpret_cast<const __m128i*>(texte.data() + q);
    return _mm_packus_epi16(_mm_loadu_si128(bloc), _mm_loadu_si128(bloc + 1));
  };
  for (; p + 17 <= texte.size(); p += 16) {
    const __m128i v = octets(p);
    const __m128i stops =
        _mm_or_si128(_mm_cmpeq_epi8(v, pourcent8),
                     _mm_and_si128(_mm_cmpeq_epi8(v, barre8), initiale8(octets(p + 1))));
    const int masque = _mm_movemask_epi8(stops);
    if (masque != 0) return p + static_cast<uint64_t>(__builtin_ctz(static_cast<unsigned>(masque)));
  }
  for (; p + 9 <= texte.size(); p += 8) {
    const int masque = _mm_movemask_epi8(arrets(p));
    if (masque != 0)
      return p + static_cast<uint64_t>(__builtin_ctz(static_cast<unsigned>(masque))) / 2;
  }
#endif
  for (; p < texte.size(); ++p)
    if (texte[p] == u'%' ||
        (texte[p] == u'\\' && p + 1 < texte.size() && EstInitiale(texte[p + 1])))
      return p;
  return kPasTrouve;
}

class ChercheurVerbatim {
 public:
  ChercheurVerbatim(const ChaineN& texte, const OptionsProseLaTeX& prose)
      : texte_(texte.Vue()), prose_(prose), crochet_(texte_, u"]"), accolade_(texte_, u"}") {}

  std::vector<RegionVerbatim> Trouve() {
    uint64_t p = 0;
    for (uint64_t reprise = 0; (p = ProchainArret(texte_, reprise)) != kPasTrouve; reprise = p) {
      if (texte_[p] == u'%') {
        // A comment, unless escaped; the comment converter uses the same rule.
        if (p > 0 && texte_[p - 1] == u'\\')
          ++p;
        else
          p = FinDeLigne(p);
        continue;
      }
      // A backslash that the one before it escapes ("\\\\begin" is a line break, then a word):
      // the walk pairs the backslashes of a run from its start.
      uint64_t avant = p;
      while (avant > reprise && texte_[avant - 1] == u'\\') --avant;
      p = (p - avant) % 2 == 1 ? p + 1 : TraiteBackslash(p);
    }
    return std::move(regions_);
  }

 private:
  // Remembered: a line of a million \verb asks for its end a million times.
  uint64_t FinDeLigne(uint64_t p) {
    if (p < debutLigne_ || p > finLigne_) {
      const uint64_t n = TrouveUnite(texte_, p, u'\n');
      finLigne_ = n == kPasTrouve ? texte_.size() : n;
    }
    debutLigne_ = p;
    return finLigne_;
  }

  uint64_t Nom(uint64_t p) const {
    while (p < texte_.size() && EstLettre(texte_[p])) ++p;
    return p;
  }

  // Past an optional "[...]" or a "{...}" at `p` on the same line; `p` when there is none.
  uint64_t SauteArgument(uint64_t p, char16_t ouvrant, char16_t fermant) {
    if (p >= texte_.size() || texte_[p] != ouvrant) return p;
    const uint64_t ligne = FinDeLigne(p);
    const uint64_t f =
        AvantLaFin((fermant == u']' ? crochet_ : accolade_).PositionApres(p + 1), ligne);
    return f == kPasTrouve ? p : f + 1;
  }

  uint64_t SauteOptions(uint64_t p, std::u16string_view options) {
    for (const char16_t o : options) {
      if (o == u'*' && p < texte_.size() && texte_[p] == u'*')
        ++p;
      else if (o == u'o')
        p = SauteArgument(p, u'[', u']');
      else if (o == u'm')
        p = SauteArgument(p, u'{', u'}');
    }
    return p;
  }

  // At a backslash before one of kInitiales: a verbatim stretch is recorded and the walk goes
  // past it; any other name is stepped over.
  uint64_t TraiteBackslash(uint64_t p) {
    const uint64_t q = p + 1;
    const uint64_t r = Nom(q);
    const std::u16string_view nom = texte_.substr(q, r - q);
    if (nom == u"begin") return TraiteBegin(p, r);
    for (const CommandeVerbatim& c : kCommandesVerbatim)
      if (nom == c.nom) return TraiteEnLigne(p, SauteOptions(r, c.avant), c.accolades);
    return r;
  }

  uint64_t TraiteEnLigne(uint64_t p, uint64_t d, bool accolades) {
    if (d >= texte_.size()) return d;
    const char16_t delimiteur = texte_[d];
    if (EstLettre(delimiteur) || EstBlancDeLigne(delimiteur) || delimiteur == u'\n' ||
        (delimiteur == u'{' && !accolades))
      return d;
    const char16_t fermant = delimiteur == u'{' ? u'}' : delimiteur;
    const uint64_t ligne = FinDeLigne(d);
    const uint64_t f = TrouveUnite(texte_.substr(0, ligne), d + 1, fermant);
    const uint64_t finContenu = f == kPasTrouve ? ligne : f;
    const uint64_t fin = f == kPasTrouve ? ligne : f + 1;
    regions_.push_back({p, d + 1, finContenu, fin, false});
    return fin;
  }

  uint64_t TraiteBegin(uint64_t p, uint64_t r) {
    if (r >= texte_.size() || texte_[r] != u'{') return r;
    const uint64_t f = AvantLaFin(accolade_.PositionApres(r + 1), FinDeLigne(r));
    if (f == kPasTrouve) return r;
    const std::u16string_view nom = texte_.substr(r + 1, f - r - 1);
    const std::u16string_view* options = OptionsDe(nom);
    if (options == nullptr) return r;
    const uint64_t debutContenu = SauteOptions(f + 1, *options);
    std::u16string fermant = u"\\end{";
    fermant.append(nom).push_back(u'}');
    const uint64_t fermeture = ChercheFermant(fermant, debutContenu);
    if (fermeture == kPasTrouve) {
      const uint64_t finParagraphe = FinDeParagraphe(texte_, debutContenu, texte_.size());
      regions_.push_back({p, debutContenu, finParagraphe, finParagraphe, true});
    } else {
      regions_.push_back({p, debutContenu, fermeture, fermeture + fermant.size(), true});
    }
    return regions_.back().fin;
  }

  const std::u16string_view* OptionsDe(std::u16string_view nom) const {
    for (const EnvironnementVerbatim& e : kEnvironnementsVerbatim)
      if (e.nom == nom) return &e.options;
    for (const std::u16string& n : prose_.EnvironnementsVerbatim)
      if (n == nom) return &kAucuneOption;
    return nullptr;
  }

  // The next "\end{name}" from `debut`, remembered by name: once one is known to be missing, or
  // to stand further on, the text is not read again for it.
  uint64_t ChercheFermant(std::u16string_view fermant, uint64_t debut) {
    auto it = std::find_if(recherches_.begin(), recherches_.end(),
                           [&](const Recherche& r) { return r.fermant == fermant; });
    if (it == recherches_.end()) {
      const std::u16string& motif = fermants_.emplace_back(fermant);
      recherches_.push_back({motif, ProchaineOccurrence(texte_, motif)});
      it = recherches_.end() - 1;
    }
    const std::optional<uint64_t> trouve = it->occurrence.Apres(debut);
    return trouve ? *trouve : kPasTrouve;
  }

  static constexpr std::u16string_view kAucuneOption = u"";
  struct Recherche {
    std::u16string_view fermant;  // into fermants_
    ProchaineOccurrence occurrence;
  };

  std::u16string_view texte_;
  const OptionsProseLaTeX& prose_;
  std::vector<RegionVerbatim> regions_;
  // Remembered: "\\lstinline[" a million times on a line with no "]" reads the line once.
  ProchaineOccurrence crochet_;
  ProchaineOccurrence accolade_;
  uint64_t debutLigne_ = UINT64_MAX;  // the last line end found, and from where
  uint64_t finLigne_ = 0;
  std::deque<std::u16string> fermants_;  // the patterns the searches point into
  std::vector<Recherche> recherches_;
};

}  // namespace

std::vector<RegionVerbatim> TrouveVerbatims(const ChaineN& texte, const OptionsProseLaTeX& prose) {
  return ChercheurVerbatim(texte, prose).Trouve();
}

uint64_t FinDeParagraphe(std::u16string_view texte, uint64_t debut, uint64_t fin) {
  for (uint64_t p = debut; (p = TrouveUnite(texte.substr(0, fin), p, u'\n')) != kPasTrouve;) {
    uint64_t q = p + 1;
    while (q < fin && EstBlancDeLigne(texte[q])) ++q;
    if (q < fin && texte[q] == u'\n') return p;
    p = q;
  }
  return fin;
}
