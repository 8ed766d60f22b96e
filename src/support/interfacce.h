// What the operations need of a window, without any toolkit: each has a Qt implementation in the desktop
// program, a console one in the headless tool and a scripted one in tests.
#pragma once

#include <string>
#include <utility>

namespace support {

// A status line or a label: a caption that is redrawn on demand.
class Didascalia {
 public:
  virtual ~Didascalia() = default;
  virtual void ImpostaTesto(const std::string& testo) = 0;
  virtual std::string Testo() const = 0;
  virtual void Ridisegna() = 0;
};

class BarraProgresso {
 public:
  virtual ~BarraProgresso() = default;
  virtual double Value() const = 0;
  virtual void SetValue(double v) = 0;
  virtual void Refresh() = 0;
};

// Message boxes: plain (OK, no icon) and critical (OK, error icon), and a question (Yes and No). Texts in
// Windows-1252.
class Messaggi {
 public:
  virtual ~Messaggi() = default;
  virtual void Semplice(const std::string& testo) = 0;
  virtual void Critico(const std::string& testo) = 0;
  // True for Yes. Without anyone to ask, the answer is No: what a question offers is always the extra.
  virtual bool Domanda(const std::string& /*testo*/) { return false; }
};

// The modal folder dialog as its callers see it: a caption, a start path, shown modally, then the outcome.
// `ExitValue` is true after OK; `PathDir` is the chosen folder without a closing "\" (a root comes as "C:").
class DialogoCartella {
 public:
  virtual ~DialogoCartella() = default;
  virtual void ImpostaTitolo(const std::string& titolo) = 0;
  virtual void ImpostaValori(const std::string& percorso) = 0;
  virtual void MostraModale() = 0;
  virtual bool ExitValue() const = 0;
  virtual std::string PathDir() const = 0;
};

// One turn of the event loop, so that a long operation lets the window repaint and take clicks.
class CicloEventi {
 public:
  virtual ~CicloEventi() = default;
  virtual void UnTurno() = 0;
};

// The report area: one string whose line ends are CR LF, and a selection. Positions count characters of that
// string from 0, a CR LF being two, whatever the widget shows.
class AreaTesto {
 public:
  virtual ~AreaTesto() = default;
  virtual std::string Testo() const = 0;
  // Replaces the whole text; the selection goes back to the start.
  virtual void ImpostaTesto(const std::string& testo) = 0;
  virtual long SelStart() const = 0;
  virtual long SelLength() const = 0;
  // Selects `lunghezza` characters from `inizio`, both clipped to the text.
  virtual void Seleziona(long inizio, long lunghezza) = 0;
  virtual std::string SelText() const = 0;
};

// The common file dialog: title, start folder, one filter entry ("Description|mask"), a file name, then
// open or save. The show calls give false for a cancel (or a dialog that failed); the folder and the
// other settings last from one use to the next.
class DialogoFile {
 public:
  virtual ~DialogoFile() = default;
  virtual void ImpostaTitolo(const std::string& titolo) = 0;
  virtual void ImpostaCartellaIniziale(const std::string& cartella) = 0;
  virtual void ImpostaFiltro(const std::string& filtro) = 0;
  virtual void ImpostaNomeFile(const std::string& nome) = 0;
  virtual bool MostraApri() = 0;
  virtual bool MostraSalva() = 0;
  // The chosen file, a Windows path.
  virtual std::string NomeFile() const = 0;
};

// A file dialog whose settings last from one showing to the next; a toolkit gives the showing.
class DialogoFileConImpostazioni : public DialogoFile {
 public:
  void ImpostaTitolo(const std::string& titolo) override { titolo_ = titolo; }
  void ImpostaCartellaIniziale(const std::string& cartella) override { cartella_ = cartella; }
  void ImpostaFiltro(const std::string& filtro) override { filtro_ = filtro; }
  void ImpostaNomeFile(const std::string& nome) override { nome_ = nome; }
  bool MostraApri() override { return Mostra(false); }
  bool MostraSalva() override { return Mostra(true); }
  std::string NomeFile() const override { return nome_; }

 protected:
  virtual bool Mostra(bool salva) = 0;
  std::string titolo_, cartella_, filtro_, nome_;
};

class Appunti {
 public:
  virtual ~Appunti() = default;
  virtual void Svuota() = 0;
  virtual void ImpostaTesto(const std::string& testo) = 0;
};

// A caption and a bar that show nothing, for callers without a window.
class DidascaliaMuta : public Didascalia {
 public:
  void ImpostaTesto(const std::string& testo) override { testo_ = testo; }
  std::string Testo() const override { return testo_; }
  void Ridisegna() override {}

 private:
  std::string testo_;
};

class CicloMuto : public CicloEventi {
 public:
  void UnTurno() override {}
};

class BarraMuta : public BarraProgresso {
 public:
  double Value() const override { return valore_; }
  void SetValue(double v) override { valore_ = v; }
  void Refresh() override {}

 private:
  double valore_ = 0;
};

// The report area held in memory.
class AreaTestoInMemoria : public AreaTesto {
 public:
  explicit AreaTestoInMemoria(std::string testo = {}) : testo_(std::move(testo)) {}
  std::string Testo() const override { return testo_; }
  void ImpostaTesto(const std::string& testo) override {
    testo_ = testo;
    inizio_ = lunghezza_ = 0;
  }
  long SelStart() const override { return inizio_; }
  long SelLength() const override { return lunghezza_; }
  void Seleziona(long inizio, long lunghezza) override {
    const long n = static_cast<long>(testo_.size());
    inizio_ = inizio < 0 ? 0 : (inizio > n ? n : inizio);
    lunghezza_ = lunghezza < 0 ? 0 : (lunghezza > n - inizio_ ? n - inizio_ : lunghezza);
  }
  std::string SelText() const override {
    return testo_.substr(static_cast<std::size_t>(inizio_), static_cast<std::size_t>(lunghezza_));
  }

 private:
  std::string testo_;
  long inizio_ = 0;
  long lunghezza_ = 0;
};

// A file dialog that is always cancelled, and a clipboard that keeps nothing, for callers without a window.
class DialogoFileMuto : public DialogoFile {
 public:
  void ImpostaTitolo(const std::string&) override {}
  void ImpostaCartellaIniziale(const std::string&) override {}
  void ImpostaFiltro(const std::string&) override {}
  void ImpostaNomeFile(const std::string&) override {}
  bool MostraApri() override { return false; }
  bool MostraSalva() override { return false; }
  std::string NomeFile() const override { return {}; }
};

class AppuntiMuti : public Appunti {
 public:
  void Svuota() override {}
  void ImpostaTesto(const std::string&) override {}
};

}  // namespace support
