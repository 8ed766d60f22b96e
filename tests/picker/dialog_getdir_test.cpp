#include "picker/dialog_getdir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "finestra_prova.h"
#include "macchina_prova.h"

namespace {

namespace fs = std::filesystem;
using picker::Dialog_GetDir;
using V = std::vector<std::string>;

V Ordinati(V v) {
  std::sort(v.begin(), v.end());
  return v;
}

// The test machine with C:\Corrente as the process's current folder and a few folders to walk.
class PickerTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* c : {"Corrente", "Giochi/Alfa", "Giochi/Beta"}) fs::create_directories(m_.C(c));
    MacchinaProva::ScriviHost(m_.C("Giochi/f.txt"), "x");
    prima_ = fs::current_path();
    fs::current_path(m_.C("Corrente"));
    picker::Carica(d_);
  }
  void TearDown() override { fs::current_path(prima_); }
  // A fresh dialog opened on `percorso`.
  Dialog_GetDir Apri(const std::string& percorso) {
    Dialog_GetDir d{msg_};
    picker::Carica(d);
    d.ExitValue = true;
    picker::ImpostaValori(d, percorso);
    return d;
  }

  MacchinaProva m_;
  fs::path prima_;
  MessaggiProva msg_;
  Dialog_GetDir d_{msg_};
};

TEST_F(PickerTest, PercorsoDiPartenza) {
  const struct {
    std::string percorso, path, testo, pathDir;
  } casi[] = {
      {"", "C:\\Corrente", "C:\\Corrente", ""},
      {"C:\\Giochi", "C:\\Giochi", "C:\\Giochi", "C:\\Giochi"},
      // The text box shows the start path as given; the list holds it without the closing backslash.
      {"c:\\giochi\\", "c:\\giochi", "c:\\giochi\\", "c:\\giochi\\"},
      {"C:\\", "C:\\", "C:\\", "C:\\"},
      // Not reported: the dialog opens on the current folder, which it then also gives as PathDir.
      {"D:\\Giochi", "C:\\Corrente", "C:\\Corrente", "C:\\Corrente"},
      {"C:\\Giochi\\f.txt", "C:\\Corrente", "C:\\Corrente", "C:\\Corrente"},
      // Without a drive the drive list already turns to the current folder, and PathDir keeps the text.
      {"Giochi", "C:\\Corrente", "C:\\Corrente", "Giochi"},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.percorso);
    const auto d = Apri(c.percorso);
    EXPECT_EQ(d.Text_Path, c.testo);
    EXPECT_EQ(d.Dir1.Path, c.path);
    EXPECT_EQ(d.PathDir, c.pathDir);
    EXPECT_FALSE(d.ExitValue);
    EXPECT_EQ(d.Drive1.Drive, "C:");
  }
  EXPECT_TRUE(msg_.tutti.empty());
}

TEST_F(PickerTest, Navigazione) {
  picker::ImpostaValori(d_, "C:\\Giochi");
  // Folders only, without "." and "..".
  EXPECT_EQ(Ordinati(d_.Dir1.sottocartelle), (V{"Alfa", "Beta"}));
  // The user opens a folder: the change event shows it.
  EXPECT_EQ(picker::ImpostaPath(d_, "C:\\Giochi\\Alfa"), 0);
  EXPECT_EQ(d_.Text_Path, "C:\\Giochi\\Alfa");
#ifdef _WIN32
  GTEST_SKIP() << "a drive that is there but not ready is a link of the test's own Wine prefix";
#endif
  // Z: is the host's root, since the test machine names no z: link; D: is there though not ready.
  EXPECT_EQ(d_.Drive1.elenco, (V{"C:", "D:", "Z:"}));
  picker::ScegliDrive(d_, "D:");
  EXPECT_EQ(msg_.tutti, V{"critical: Drive not ready"});
  EXPECT_EQ(d_.Drive1.Drive, "C:");
  EXPECT_EQ(d_.Text_Path, "C:\\Giochi\\Alfa");
  // Another drive opens on its root, and coming back finds the folder left there.
  picker::ScegliDrive(d_, "z:");
  EXPECT_EQ(d_.Text_Path, "Z:\\");
  picker::ScegliDrive(d_, "C:");
  EXPECT_EQ(d_.Dir1.Path, "C:\\Giochi\\Alfa");
  // A drive the list does not hold cannot be picked.
  picker::ScegliDrive(d_, "Q:");
  EXPECT_EQ(d_.Drive1.Drive, "C:");
  EXPECT_EQ(msg_.tutti.size(), 1u);
}

TEST_F(PickerTest, OkECancel) {
  auto ok = Apri("C:\\"), annulla = Apri("C:\\Giochi");
  picker::OKButton_Click(ok);
  EXPECT_TRUE(ok.chiuso && ok.ExitValue);
  EXPECT_EQ(ok.PathDir, "C:");  // a root comes back without its backslash
  picker::CancelButton_Click(annulla);
  EXPECT_TRUE(annulla.chiuso && !annulla.ExitValue);
  EXPECT_EQ(annulla.PathDir, "");
}

TEST_F(PickerTest, NuovaCartella) {
  const struct {
    const char* nome;
    std::string inizio, testo;
    std::string messaggio;  // "" when the folder is made
    std::string nuova;      // the folder shown afterwards
  } casi[] = {
      {"at a root", "C:\\", "Nuova", "", "C:\\Nuova"},
      {"blanks trimmed", "C:\\Giochi", "  Spazi  ", "", "C:\\Giochi\\Spazi"},
      {"no name", "C:\\Giochi", "", "You must write name for new folder, before click on this button",
       "C:\\Giochi"},
      {"a file of that name", "C:\\Giochi", "F.TXT", "The folder \"C:\\Giochi\\F.TXT\" is already present",
       "C:\\Giochi"},
      {"a folder of that name", "C:\\Giochi", "alfa", "The folder \"C:\\Giochi\\alfa\" is already present",
       "C:\\Giochi"},
      {"a missing parent", "C:\\Giochi", "Manca\\Sotto",
       "The folder \"C:\\Giochi\\Manca\\Sotto\" cannot be created", "C:\\Giochi"},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.nome);
    msg_.tutti.clear();
    auto d = Apri(c.inizio);
    d.Text_PathDir = c.testo;
    picker::Pul_NuovaCartella_Click(d);
    EXPECT_EQ(msg_.tutti, c.messaggio.empty() ? V{} : V{"critical: " + c.messaggio});
    EXPECT_EQ(d.Dir1.Path, c.nuova);
    EXPECT_EQ(d.Text_Path, c.nuova);
    EXPECT_FALSE(d.chiuso);
    EXPECT_TRUE(fs::is_directory(m_.C(c.nuova.substr(3))));  // the folder shown is there
    EXPECT_EQ(d.PathDir, c.nuova);
  }
}

TEST(NormalizzaPercorso, BarreDoppie) {
  // One pass from the left: two become one, three become two, four become two.
  EXPECT_EQ(picker::NormalizzaPercorso("\\\\server\\share\\\\x"), "\\server\\share\\x");
  EXPECT_EQ(picker::NormalizzaPercorso("C:\\a\\\\\\b"), "C:\\a\\\\b");
  EXPECT_EQ(picker::NormalizzaPercorso("C:\\a\\\\\\\\b\\"), "C:\\a\\\\b\\");
}

TEST_F(PickerTest, LaCartellaCorrenteSparita) {
#ifdef _WIN32
  GTEST_SKIP() << "Windows will not remove a process's current folder";
#endif
  // Neither the start path nor the current folder can be listed: the list is empty and the call ends.
  fs::remove(m_.C("Corrente"));
  picker::ImpostaValori(d_, "C:\\Manca");
  EXPECT_TRUE(d_.Dir1.sottocartelle.empty());
  EXPECT_TRUE(msg_.tutti.empty());
  EXPECT_FALSE(d_.chiuso);
}

TEST_F(PickerTest, IlDialogoComeLoVedonoIChiamanti) {
  V visti;
  picker::DialogoGetDir dialogo(msg_, [&](Dialog_GetDir& d) {
    visti.push_back(d.Caption + "|" + d.Text_Path);
    if (visti.size() == 1) picker::OKButton_Click(d);  // the second time the user leaves by the frame
  });
  support::DialogoCartella& chiamante = dialogo;
  chiamante.ImpostaTitolo("Select TRLE folder");
  chiamante.ImpostaValori("C:\\Giochi\\Alfa");
  chiamante.MostraModale();
  EXPECT_TRUE(chiamante.ExitValue());
  EXPECT_EQ(chiamante.PathDir(), "C:\\Giochi\\Alfa");
  // A fresh instance, with the default caption; leaving by the frame keeps the outcome as it was.
  chiamante.ImpostaValori("C:\\Giochi");
  chiamante.MostraModale();
  EXPECT_FALSE(chiamante.ExitValue());
  EXPECT_EQ(chiamante.PathDir(), "C:\\Giochi");
  EXPECT_EQ(visti, (V{"Select TRLE folder|C:\\Giochi\\Alfa", " Select a folder|C:\\Giochi"}));
  EXPECT_TRUE(msg_.tutti.empty());
}

}  // namespace
