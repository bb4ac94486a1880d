// ConvertisseurSRT: blocks and blank lines under both line ends, the tags of subtitle text and
// their style spans, and the text the chain makes of a whole file.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "DecritRapports.h"
#include "Outils.h"
#include "ferlane/SuiteDeMapChaines.h"
#include "subtitles/ConvertisseurSRT.h"

namespace {

struct Cas {
  std::u16string_view texte;
  std::string_view attendu;
};

template <size_t N>
void VerifieTous(const Cas (&cas)[N]) {
  for (const Cas& c : cas) {
    ConvertisseurSRT convertisseur;
    EXPECT_EQ(DecritRapports(convertisseur, c.texte), c.attendu) << VersUtf8(c.texte);
  }
}

TEST(ConvertisseurSRT, BlocsEtLignesVides) {
  static const Cas kCas[] = {
      {u"", ""},
      {u"Hello", ""},
      {u"1\nHello", ""},
      // Number and timing lines go; the first line end after a block's text stays.
      {u"1\n00:01 --> 00:02\nHello\n\n2\n00:03 --> 00:04\nWorld\n",
       "R[0,18)''{0,0} R[24,25)''{0,0} R[25,43)''{0,0}"},
      // "\r\n" anywhere makes it the line end; a lone "\n" inside a block is then text.
      {u"1\r\n00:01 --> 00:02\r\nHi\nthere\r\n\r\n2\r\n00:03 --> 00:04\r\nBye\r\n",
       "R[0,20)''{0,0} R[30,32)''{0,0} R[32,52)''{0,0}"},
      // Three blank lines: the three further line ends in one masking, then the next block's
      // number and timing lines; the last block runs to the end of the file.
      {u"1\nt\nA\n\n\n\n2\nt\nB", "R[0,4)''{0,0} R[6,9)''{0,0} R[9,13)''{0,0}"},
      // An empty subtitle text takes everything up to the next blank line, the next block's
      // number and timing lines included.
      {u"1\nt\n\n2\nt\nB\n\n3\nt\nC", "R[0,4)''{0,0} R[11,12)''{0,0} R[12,16)''{0,0}"},
      // A byte-order mark goes with the first number line.
      {u"\uFEFF1\nt\nA", "R[0,5)''{0,0}"},
  };
  VerifieTous(kCas);
}

TEST(ConvertisseurSRT, Balises) {
  static const Cas kCas[] = {
      // The closing tag is masked when its opening tag is met, and again when reached.
      {u"1\nt\n<i>word</i>",
       "R[0,4)''{0,0} R[4,7)''{0,0} R[11,15)''{0,0} M[6,11)1 R[11,15)''{0,0}"},
      // Style tags are compared with their letter case: masked, but no style.
      {u"1\nt\n<I>word</I>", "R[0,4)''{0,0} R[4,7)''{0,0} R[11,15)''{0,0}"},
      {u"1\nt\n{bold}a{/bold}",
       "R[0,4)''{0,0} R[4,10)''{0,0} R[11,18)''{0,0} M[9,11)2 "
       "R[11,18)''{0,0}"},
      // Unknown tags are masked all the same.
      {u"1\nt\n<font color=red>A</font>{\\an8}B",
       "R[0,4)''{0,0} R[4,20)''{0,0} R[21,28)''{0,0} R[28,34)''{0,0}"},
      // A "<" with no ">" in its block masks the rest of the block's text, and nothing after.
      {u"1\nt\na < b\n\n2\nt\nc > d",
       "R[0,4)''{0,0} R[6,9)''{0,0} R[10,11)''{0,0} R[11,15)''{0,0}"},
      // A closing tag in a later block: masked from here, the style stops at this block's end.
      {u"1\nt\n<b>x\n\n2\nt\ny</b>z",
       "R[0,4)''{0,0} R[4,7)''{0,0} R[15,19)''{0,0} M[6,8)2 R[9,10)''{0,0} R[10,14)''{0,0} "
       "R[15,19)''{0,0}"},
      // Never closed: the style runs to the end of the block's text, nothing more is masked.
      {u"1\nt\n{i}abc\n\n2\nt\nd",
       "R[0,4)''{0,0} R[4,7)''{0,0} M[6,10)1 R[11,12)''{0,0} "
       "R[12,16)''{0,0}"},
      // Nested styles.
      {u"1\nt\n<b><i>x</i></b>",
       "R[0,4)''{0,0} R[4,7)''{0,0} R[15,19)''{0,0} M[6,15)2 R[7,10)''{0,0} R[11,15)''{0,0} "
       "M[9,11)1 R[11,15)''{0,0} R[15,19)''{0,0}"},
      // A tag inside a tag is a tag of its own.
      {u"1\nt\n<a <i>>x", "R[0,4)''{0,0} R[4,10)''{0,0} R[7,10)''{0,0} M[9,12)1"},
  };
  VerifieTous(kCas);
}

// The real and generated files of the corpus: no tag, number or timing line is left.
TEST(ConvertisseurSRT, CorpusDeSousTitres) {
  const std::filesystem::path dossier = std::filesystem::path(FILTRES_CORPUS) / "srt";
  if (!std::filesystem::is_directory(dossier)) GTEST_SKIP() << "no corpus at " << dossier;
  for (const auto& entree : std::filesystem::directory_iterator(dossier)) {
    const ChaineN fichier(Utf16(LitFichier(entree.path().string())));
    ConvertisseurSRT convertisseur;
    SuiteDeMapChaines<TexteAvecAttributs> suite;
    suite.AjouteConvertisseur(&convertisseur);
    const std::u16string interne = suite.Convertis(fichier).Interne().Chaine().Texte();
    EXPECT_FALSE(interne.empty()) << entree.path();
    EXPECT_EQ(interne.find_first_of(u"<>{}"), std::u16string::npos) << entree.path();
    EXPECT_EQ(interne.find(u"-->"), std::u16string::npos) << entree.path();
    EXPECT_EQ(interne.find(u"\n\n"), std::u16string::npos) << entree.path();
  }
}

}  // namespace
