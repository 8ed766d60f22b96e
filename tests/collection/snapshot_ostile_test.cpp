// Snapshots that come from outside are hostile until shown otherwise: none of these may write outside the
// target folder, crash, or allocate anything near the sizes it claims.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <set>

#include "collection/snapshot.h"
#include "macchina_prova.h"
#include "osservatore_allocazioni.h"

namespace {

namespace fs = std::filesystem;

std::string Voce(const std::string& nome, std::int32_t dimensione) {
  return Le32(static_cast<std::int32_t>(nome.size())) + nome + Le32(dimensione);
}

std::set<std::string> Albero(const std::string& radice, bool profondo = true) {
  std::set<std::string> tutti;
  for (auto it = fs::recursive_directory_iterator(radice); it != fs::end(it); ++it) {
    if (!profondo) it.disable_recursion_pending();
    tutti.insert(fs::relative(it->path(), radice).generic_string() +
                 (it->is_regular_file() ? std::string(":").append(std::to_string(it->file_size())) : ""));
  }
  return tutti;
}

#ifdef _WIN32
// C:\ is the machine's own drive there, Windows and all; a name that climbs out of the target folder can
// only land at the top of it.
constexpr bool kTuttoIlDrive = false;
#else
constexpr bool kTuttoIlDrive = true;
#endif

struct Ostile {
  const char* caso;
  std::string byte;
  bool risultato;
  std::set<std::string> scritti;  // what the target folder holds afterwards, with sizes
};

TEST(SnapshotOstile, NessunDannoFuoriDallaCartella) {
  {
    // The watch itself must see allocations, or the limits below would prove nothing.
    OsservaAllocazioni o;
    auto grande = std::make_unique<char[]>(std::size_t{1} << 22);
    EXPECT_GE(o.Massima(), std::size_t{1} << 22);
  }
  const std::int32_t kMax = 0x7FFFFFFF;
  const Ostile casi[] = {
      {"nothing in it", Le32(0), true, {}},
      {"empty file", "", false, {}},
      {"three bytes", std::string("\x01\x00\x00", 3), false, {}},
      {"negative count", Le32(-1), false, {}},
      {"absurd count", Le32(kMax) + Voce("a", 0), false, {}},
      {"name length past the end", Le32(1) + Le32(kMax) + "abc", false, {}},
      {"negative name length", Le32(1) + Le32(-5) + Le32(0), false, {}},
      {"size past the end", Le32(2) + Voce("ok.txt", 2) + Voce("b", kMax) + "ok", false, {"ok.txt:2"}},
      {"negative size", Le32(2) + Voce("ok.txt", 2) + Voce("b", -1) + "ok", false, {"ok.txt:2"}},
      {"truncated body", Le32(2) + Voce("ok.txt", 2) + Voce("b", 10) + "ok" + "12345", false, {"ok.txt:2"}},
      {"traversal in names",
       Le32(6) + Voce("..", 1) + Voce("C:..", 1) + Voce("a/../../x", 1) + Voce("...", 1) + Voce(". .", 1) +
           Voce("C:\\..\\..\\fuga.txt", 2) + "12345" + "ok",
       true,
       {"fuga.txt:2"}},
      {"device names",
       Le32(5) + Voce("C:\\x\\CON", 1) + Voce("nul.txt", 1) + Voce("Com1.log", 1) + Voce("lpt9", 1) +
           Voce("conto.txt", 2) + "1234" + "ok",
       true,
       {"conto.txt:2"}},
      {"NUL inside a name",
       Le32(2) + Voce(std::string("a\0b", 3), 1) + Voce("ok.txt", 2) + "x" + "ok",
       true,
       {"ok.txt:2"}},
      {"empty name", Le32(2) + Le32(0) + Le32(1) + Voce("ok.txt", 2) + "x" + "ok", true, {"ok.txt:2"}},
  };
  for (const auto& c : casi) {
    MacchinaProva m;
    fs::create_directories(m.C("Dati"));
    MacchinaProva::ScriviHost(m.C("snap.bin"), c.byte);
    const auto fuoriPrima = Albero(m.C(""), kTuttoIlDrive);

    collection::ContenutoSnapshot contenuto;
    bool r = false;
    std::size_t allocazione = 0;
    {
      OsservaAllocazioni osserva;
      r = collection::EstraiSnapshot("C:\\snap.bin", "C:\\Dati", contenuto);
      allocazione = osserva.Massima();
    }

    EXPECT_EQ(r, c.risultato) << c.caso;
    EXPECT_LT(allocazione, std::size_t{4} << 20) << c.caso;
    EXPECT_EQ(Albero(m.C("Dati")), c.scritti) << c.caso;
    auto fuoriDopo = Albero(m.C(""), kTuttoIlDrive);
    std::erase_if(fuoriDopo, [](const std::string& s) { return s.starts_with("Dati/"); });
    EXPECT_EQ(fuoriDopo, fuoriPrima) << c.caso;
    if (!m.Prefisso().empty()) {
      EXPECT_EQ(Albero(m.Prefisso() + "/dosdevices").size(), 2u) << c.caso;
    }
  }
}

}  // namespace
