// Shared test helpers.
#include "Outils.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "ferlane/CodageUtf.h"

std::string VersUtf8(std::u16string_view texte) {
  return EncodeUtf8(texte);
}
std::u16string Utf16(std::string_view utf8) {
  return DecodeUtf8(utf8);
}

std::string LitFichier(const std::string& chemin) {
  std::ifstream fichier(chemin, std::ios::binary);
  if (!fichier) throw std::runtime_error("cannot read " + chemin);
  return std::string((std::istreambuf_iterator<char>(fichier)), std::istreambuf_iterator<char>());
}

ResultatCommande LanceFiltres(const std::string& arguments, const std::string& entree) {
  char modeleEntree[] = "/tmp/filtres-entree-XXXXXX";
  char modeleSortie[] = "/tmp/filtres-sortie-XXXXXX";
  char modeleErreurs[] = "/tmp/filtres-erreurs-XXXXXX";
  const int fe = mkstemp(modeleEntree), fs = mkstemp(modeleSortie), fr = mkstemp(modeleErreurs);
  if (fe < 0 || fs < 0 || fr < 0) throw std::runtime_error("mkstemp failed");
  if (write(fe, entree.data(), entree.size()) != static_cast<ssize_t>(entree.size()))
    throw std::runtime_error("write failed");
  close(fe), close(fs), close(fr);
  const std::string commande = std::string("'") + FILTRES_EXECUTABLE + "' " + arguments + " <" +
                               modeleEntree + " >" + modeleSortie + " 2>" + modeleErreurs;
  const int statut = std::system(commande.c_str());
  ResultatCommande resultat;
  resultat.statut = WIFEXITED(statut) ? WEXITSTATUS(statut) : -1;
  resultat.sortie = LitFichier(modeleSortie);
  resultat.erreurs = LitFichier(modeleErreurs);
  std::remove(modeleEntree), std::remove(modeleSortie), std::remove(modeleErreurs);
  return resultat;
}

FichierTemporaire::FichierTemporaire(const std::string& contenu) {
  char modele[] = "/tmp/filtres-test-XXXXXX";
  const int descripteur = mkstemp(modele);
  if (descripteur < 0) throw std::runtime_error("mkstemp failed");
  close(descripteur);
  chemin_ = modele;
  std::ofstream(chemin_, std::ios::binary) << contenu;
}

FichierTemporaire::~FichierTemporaire() {
  std::remove(chemin_.c_str());
}
