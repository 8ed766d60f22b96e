// Which member a name of the snapshot's table is: by its last component, as the reports find the file.
#include "collection/membri.h"

#include <gtest/gtest.h>

namespace {

using collection::Membro;

TEST(Membri, DalNomeNellaTabella) {
  const std::pair<const char*, std::optional<Membro>> casi[] = {
      {"C:\\Prog\\INFOFILE.BIN", Membro::intestazione},
      {"D:\\Ordelio\\Ordelio.prf", Membro::preferenze},
      {"C:\\Ordelio\\Livelli.QLV", Membro::archivio},  // the archive goes by its extension
      {"C:\\Prog\\DirArc.el", Membro::elencoArchivio},
      {"C:ordl.EL", Membro::elencoOrdl},
      {"C:\\Giochi\\Trle\\script.dat", Membro::script},
      {"C:\\Prog\\backup_trle.le", std::nullopt},  // a sample list: no report reads it from a snapshot
      {"C:\\Giochi\\Trle\\", std::nullopt},
      {"", std::nullopt},
  };
  for (const auto& [nome, atteso] : casi) EXPECT_EQ(collection::MembroDiNome(nome), atteso) << nome;
}

}  // namespace
