// The version resource read out of PE files: hostile ones must give "" without a crash and without
// allocating what they claim, whether read from memory or piece by piece from a file.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "host/versione.h"
#include "macchina_prova.h"
#include "osservatore_allocazioni.h"

namespace {

// A minimal PE file with one section, .rsrc at RVA 0x1000 and file offset 0x200, holding a resource tree:
// a named type before type 16, then name 1, language 0x409, the data entry and the block. The offsets are
// kept so that each case below can break one thing.
struct PeProva {
  static constexpr std::size_t kPe = 0x40, kOpzionale = kPe + 24, kRisorse = 0x200;
  static constexpr std::size_t kRadice = kRisorse, kNome = kRisorse + 0x20, kLingua = kRisorse + 0x38;
  static constexpr std::size_t kVoceDati = kRisorse + 0x50, kBlocco = kRisorse + 0x60;
  static constexpr std::uint32_t kRva = 0x1000, kCartella = 0x80000000u;
  static inline const std::string kContenuto = "VS_VERSION_INFO di prova";

  std::string byte;
  std::size_t cartelleDati, sezione;

  // A little-endian 32-bit value; written over a 16-bit field it clears the two bytes after it, which are
  // zero throughout (or written later).
  void M(std::size_t o, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) byte[o + i] = static_cast<char>((v >> (8 * i)) & 0xFF);
  }

  explicit PeProva(bool pe32piu)
      : byte(kBlocco + kContenuto.size(), '\0'),
        cartelleDati(kOpzionale + (pe32piu ? 112 : 96)),
        sezione(kOpzionale + (pe32piu ? 240 : 224)) {
    const auto dimensione = static_cast<std::uint32_t>(byte.size() - kRisorse);
    byte.replace(0, 2, "MZ");
    byte.replace(kPe, 4, std::string("PE\0\0", 4));
    const std::pair<std::size_t, std::uint32_t> campi[] = {
        // Where the PE header is, one section, the optional header's size and kind, 16 data directories
        // of which the resource one, and the section that holds it.
        {0x3C, kPe},
        {kPe + 6, 1},
        {kPe + 20, static_cast<std::uint32_t>(sezione - kOpzionale)},
        {kOpzionale, pe32piu ? 0x20Bu : 0x10Bu},
        {cartelleDati - 4, 16},
        {cartelleDati + 16, kRva},
        {cartelleDati + 20, dimensione},
        {sezione + 8, dimensione},
        {sezione + 12, kRva},
        {sezione + 16, dimensione},
        {sezione + 20, kRisorse},
        // The root: one named entry (never read) and one by id, type 16; then name 1, language 0x409 and
        // the data entry.
        {kRadice + 12, 0x10001},
        {kRadice + 16, kCartella | 0x40},
        {kRadice + 20, kCartella | 0x20},
        {kRadice + 24, 16},
        {kRadice + 28, kCartella | 0x20},
        {kNome + 14, 1},
        {kNome + 16, 1},
        {kNome + 20, kCartella | 0x38},
        {kLingua + 14, 1},
        {kLingua + 16, 0x409},
        {kLingua + 20, 0x50},
        {kVoceDati, kRva + 0x60},
        {kVoceDati + 4, static_cast<std::uint32_t>(kContenuto.size())}};
    for (const auto& [o, v] : campi) M(o, v);
    byte.replace(kBlocco, kContenuto.size(), kContenuto);
  }
};

std::string Estrai(const std::string& byte) {
  host::LettoreMemoria l(byte);
  return host::EstraiRisorsaVersione(l);
}

TEST(PeVersione, FileOstiliDannoVuoto) {
  using P = PeProva;
  using Caso = std::pair<const char*, std::function<void(P&)>>;  // what is broken, and how
  std::vector<Caso> casi = {
      {"no MZ", [](P& p) { p.byte[1] = 'X'; }},
      {"e_lfanew past the end", [](P& p) { p.M(0x3C, 0xFFFFFFF0u); }},
      {"bad PE signature", [](P& p) { p.byte[P::kPe + 3] = 1; }},
      {"unknown optional header magic", [](P& p) { p.M(P::kOpzionale, 0x107); }},
      {"optional header ends before the resource entry",
       [](P& p) { p.M(P::kPe + 20, static_cast<std::uint32_t>(p.cartelleDati - P::kOpzionale + 20)); }},
      {"only two data directories", [](P& p) { p.M(p.cartelleDati - 4, 2); }},
      {"resource RVA in no section", [](P& p) { p.M(p.cartelleDati + 16, 0x5000); }},
      {"absurd section count", [](P& p) { p.M(P::kPe + 6, 0xFFFF); }},
      {"section past the end of the file", [](P& p) { p.M(p.sezione + 20, 0xFFFFFF00u); }},
      {"absurd entry counts", [](P& p) { p.M(P::kRadice + 12, 0xFFFFFFFFu); }},
      {"no type 16", [](P& p) { p.M(P::kRadice + 24, 3); }},
      {"type 16 is a data entry", [](P& p) { p.M(P::kRadice + 28, 0x20); }},
      {"subdirectory offset beyond 4 GB", [](P& p) { p.M(P::kRadice + 28, 0xFFFFFFFFu); }},
      // Without a guard the walk would go round once and take the root's named entry as the data.
      {"name points back to the root",
       [](P& p) {
         p.M(P::kRadice + 20, 0x50);
         p.M(P::kNome + 20, P::kCartella);
       }},
      {"language is a directory", [](P& p) { p.M(P::kLingua + 20, P::kCartella | 0x38); }},
      {"data size past the end", [](P& p) { p.M(P::kVoceDati + 4, 0x7FFFFFFF); }},
      {"data size past the end of a 4 GB section",
       [](P& p) {
         p.M(p.sezione + 16, 0xFFFFFFFFu);
         p.M(P::kVoceDati + 4, 0x7FFFFFFF);
       }},
      {"data address and size wrap around",
       [](P& p) {
         p.M(P::kVoceDati, 0xFFFFFFF0u);
         p.M(P::kVoceDati + 4, 0x20);
       }},
      {"empty data", [](P& p) { p.M(P::kVoceDati + 4, 0); }},
  };
  for (const bool pe32piu : {false, true}) {
    ASSERT_EQ(Estrai(PeProva(pe32piu).byte), PeProva::kContenuto);
    std::vector<Caso> tutti = casi;
    // Cut inside each structure in turn.
    for (std::size_t fine :
         {std::size_t{0x30}, P::kPe + 10, P::kOpzionale + 100, PeProva(pe32piu).sezione + 30, P::kRadice + 20,
          P::kVoceDati + 6, P::kBlocco + 1})
      tutti.push_back({"cut", [fine](P& p) { p.byte.resize(fine); }});
    for (const auto& [nome, guasto] : tutti) {
      SCOPED_TRACE(std::string(nome) + (pe32piu ? " (PE32+)" : " (PE32)"));
      PeProva p(pe32piu);
      guasto(p);
      {
        OsservaAllocazioni o;
        EXPECT_EQ(Estrai(p.byte), "");
        EXPECT_LE(o.Massima(), p.byte.size() + 1);
      }
#ifndef _WIN32
      // On Windows the platform reads the file; Wine's own reader there takes some of these as sound.
      MacchinaProva m;
      MacchinaProva::ScriviHost(m.C("ostile.exe"), p.byte);
      EXPECT_EQ(host::LeggiBloccoVersione("C:\\ostile.exe"), "");
#endif
    }
  }
}

}  // namespace
