// `filtres batch`: one output line per input line, in input order, whatever the threads; a bad
// line gives an error for itself alone; the same texts as one command run per document.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "LignesJson.h"
#include "Outils.h"

namespace {

using json = nlohmann::json;

TEST(Lot, OrdreErreursParLigneEtMemesTextesQueLaCommande) {
  const FichierTemporaire page("<p>caf&eacute; <b>mot</b></p>");
  // Many lines, so that several chunks and threads take part; bad lines among them.
  std::string entree;
  for (int i = 0; i < 300; ++i) {
    switch (i % 5) {
      case 0:
        entree += "{\"id\":" + std::to_string(i) + ",\"path\":\"" + page.Chemin() +
                  "\",\"format\":\"html\"}\n";
        break;
      case 1:
        entree +=
            "{\"id\":" + std::to_string(i) + ",\"text\":\"a `b` *c*\",\"format\":\"markdown\"}\n";
        break;
      case 2:
        entree += "{\"id\":" + std::to_string(i) + ",\"path\":\"/no/such/file\"}\n";
        break;
      case 3:
        entree += "not json " + std::to_string(i) + "\n";
        break;
      default:
        entree += "{\"id\":\"s" + std::to_string(i) + "\",\"text\":\"x\",\"format\":\"rtf\"}\n";
    }
  }
  const ResultatCommande r = LanceFiltres("batch --jobs 3", entree);
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  const std::vector<json> sorties = LignesJson(r.sortie);
  ASSERT_EQ(sorties.size(), 300u);
  const json seulePage = json::parse(LanceFiltres("--json --format html " + page.Chemin()).sortie);
  for (int i = 0; i < 300; ++i) {
    const json& s = sorties[i];
    switch (i % 5) {
      case 0:
        EXPECT_EQ(s["id"], i);
        EXPECT_EQ(s["text"], seulePage["text"]);
        EXPECT_EQ(s["map"], seulePage["map"]);
        break;
      case 1:
        EXPECT_EQ(s["text"], "a b c");
        EXPECT_EQ(s["styles"].size(), 2u);
        break;
      case 2:
        EXPECT_NE(s["error"].get<std::string>().find("cannot open"), std::string::npos);
        break;
      case 3:
        EXPECT_TRUE(s["id"].is_null() && s.contains("error"));
        break;
      default:
        EXPECT_EQ(s["error"], "unknown format 'rtf'");
        EXPECT_EQ(s["id"], "s" + std::to_string(i));
    }
  }
  // The common options apply to every document.
  const ResultatCommande exact = LanceFiltres(
      "batch --exact --jobs 1", "{\"id\":1,\"text\":\"a `b`\",\"format\":\"markdown\"}\n");
  EXPECT_EQ(LignesJson(exact.sortie).at(0)["text"], "a `b`");
  EXPECT_EQ(LanceFiltres("batch", "").sortie, "");
}

}  // namespace
