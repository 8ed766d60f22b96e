// The version resource read out of PE files: hostile ones must give "" without a crash and without
// allocating what they claim; real ones give the same block whether read from memory or piece by piece.
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

  void M16(std::size_t o, std::uint32_t v) {
    byte[o] = static_cast<char>(v & 0xFF);
    byte[o + 1] = static_cast<char>((v >> 8) & 0xFF);
  }
  void M32(std::size_t o, std::uint32_t v) {
    M16(o, v & 0xFFFF);
    M16(o + 2, v >> 16);
  }

  explicit PeProva(bool pe32piu)
      : byte(kBlocco + kContenuto.size(), '\0'),
        cartelleDati(kOpzionale + (pe32piu ? 112 : 96)),
        sezione(kOpzionale + (pe32piu ? 240 : 224)) {
    const auto dimensione = static_cast<std::uint32_t>(byte.size() - kRisorse);
    byte.replace(0, 2, "MZ");
    M32(0x3C, kPe);
    byte.replace(kPe, 4, std::string("PE\0\0", 4));
    M16(kPe + 6, 1);
    M16(kPe + 20, static_cast<std::uint32_t>(sezione - kOpzionale));
    M16(kOpzionale, pe32piu ? 0x20B : 0x10B);
    M32(cartelleDati - 4, 16);
    M32(cartelleDati + 16, kRva);
    M32(cartelleDati + 20, dimensione);
    M32(sezione + 8, dimensione);
    M32(sezione + 12, kRva);
    M32(sezione + 16, dimensione);
    M32(sezione + 20, kRisorse);
    M16(kRadice + 12, 1);
    M16(kRadice + 14, 1);
    M32(kRadice + 16, kCartella | 0x40);  // a name, never read
    M32(kRadice + 20, kCartella | 0x20);
    M32(kRadice + 24, 16);
    M32(kRadice + 28, kCartella | 0x20);
    M16(kNome + 14, 1);
    M32(kNome + 16, 1);
    M32(kNome + 20, kCartella | 0x38);
    M16(kLingua + 14, 1);
    M32(kLingua + 16, 0x409);
    M32(kLingua + 20, 0x50);
    M32(kVoceDati, kRva + 0x60);
    M32(kVoceDati + 4, static_cast<std::uint32_t>(kContenuto.size()));
    byte.replace(kBlocco, kContenuto.size(), kContenuto);
  }
};

std::string Estrai(const std::string& byte) {
  host::LettoreMemoria l(byte);
  return host::EstraiRisorsaVersione(l);
}

TEST(PeVersione, FileOstiliDannoVuoto) {
  using P = PeProva;
  struct Caso {
    const char* nome;
    std::function<void(P&)> guasto;
  };
  const Caso casi[] = {
      {"cut short", [](P& p) { p.byte.resize(0x30); }},
      {"no MZ", [](P& p) { p.byte[1] = 'X'; }},
      {"e_lfanew past the end", [](P& p) { p.M32(0x3C, 0xFFFFFFF0u); }},
      {"bad PE signature", [](P& p) { p.byte[P::kPe + 3] = 1; }},
      {"unknown optional header magic", [](P& p) { p.M16(P::kOpzionale, 0x107); }},
      {"optional header ends before the resource entry",
       [](P& p) { p.M16(P::kPe + 20, static_cast<std::uint32_t>(p.cartelleDati - P::kOpzionale + 20)); }},
      {"only two data directories", [](P& p) { p.M32(p.cartelleDati - 4, 2); }},
      {"no resource directory", [](P& p) { p.M32(p.cartelleDati + 16, 0); }},
      {"resource RVA in no section", [](P& p) { p.M32(p.cartelleDati + 16, 0x5000); }},
      {"absurd section count", [](P& p) { p.M16(P::kPe + 6, 0xFFFF); }},
      {"section past the end of the file", [](P& p) { p.M32(p.sezione + 20, 0xFFFFFF00u); }},
      {"absurd entry counts", [](P& p) { p.M32(P::kRadice + 12, 0xFFFFFFFFu); }},
      {"no type 16", [](P& p) { p.M32(P::kRadice + 24, 3); }},
      {"type 16 is a data entry", [](P& p) { p.M32(P::kRadice + 28, 0x20); }},
      {"subdirectory offset beyond 4 GB", [](P& p) { p.M32(P::kRadice + 28, 0xFFFFFFFFu); }},
      {"name points to itself", [](P& p) { p.M32(P::kNome + 20, P::kCartella | 0x20); }},
      // Without a guard the walk would go round once and take the root's named entry as the data.
      {"name points back to the root",
       [](P& p) {
         p.M32(P::kRadice + 20, 0x50);
         p.M32(P::kNome + 20, P::kCartella);
       }},
      {"language is a directory", [](P& p) { p.M32(P::kLingua + 20, P::kCartella | 0x38); }},
      {"data size past the end", [](P& p) { p.M32(P::kVoceDati + 4, 0x7FFFFFFF); }},
      {"data size past the end of a 4 GB section",
       [](P& p) {
         p.M32(p.sezione + 16, 0xFFFFFFFFu);
         p.M32(P::kVoceDati + 4, 0x7FFFFFFF);
       }},
      {"data address and size wrap around",
       [](P& p) {
         p.M32(P::kVoceDati, 0xFFFFFFF0u);
         p.M32(P::kVoceDati + 4, 0x20);
       }},
      {"empty data", [](P& p) { p.M32(P::kVoceDati + 4, 0); }},
  };
  for (const bool pe32piu : {false, true}) {
    ASSERT_EQ(Estrai(PeProva(pe32piu).byte), PeProva::kContenuto);
    std::vector<Caso> tutti(std::begin(casi), std::end(casi));
    // Cut inside each structure in turn.
    for (std::size_t fine : {std::size_t{0}, P::kPe + 10, P::kOpzionale + 100, PeProva(pe32piu).sezione + 30,
                             P::kRadice + 20, P::kVoceDati + 6, P::kBlocco + 1})
      tutti.push_back({"cut", [fine](P& p) { p.byte.resize(fine); }});
    for (const auto& c : tutti) {
      SCOPED_TRACE(std::string(c.nome) + (pe32piu ? " (PE32+)" : " (PE32)"));
      PeProva p(pe32piu);
      c.guasto(p);
      {
        OsservaAllocazioni o;
        EXPECT_EQ(Estrai(p.byte), "");
        EXPECT_LE(o.Massima(), p.byte.size() + 1);
      }
      MacchinaProva m;
      MacchinaProva::ScriviHost(m.C("ostile.exe"), p.byte);
      EXPECT_EQ(host::LeggiBloccoVersione("C:\\ostile.exe"), "");
    }
  }
}

TEST(PeVersione, DalFileComeInMemoria) {
  MacchinaProva m;
  for (const char* nome : {"prova.exe", "prova32.exe", "in_fondo.exe"}) {
    SCOPED_TRACE(nome);
    const std::string byte =
        MacchinaProva::LeggiHost(std::string(CHECKORDL_DATI_PROVA) + "/versione/" + nome);
    MacchinaProva::ScriviHost(m.C(std::string("Giochi/") + nome), byte);
    const std::string blocco = host::LeggiBloccoVersione(std::string("c:\\GIOCHI\\") + nome);
    EXPECT_EQ(blocco, Estrai(byte));
    EXPECT_EQ(blocco.substr(6, 8), std::string("V\0S\0_\0V\0", 8));
    // The first language of the resource, not the second.
    EXPECT_EQ(blocco.find(std::string("s\0e\0c\0o\0n\0d\0a", 13)), std::string::npos);
  }
  EXPECT_EQ(host::LeggiBloccoVersione("C:\\Giochi\\manca.exe"), "");
  EXPECT_EQ(host::LeggiBloccoVersione("C:\\Giochi"), "");
}

}  // namespace
