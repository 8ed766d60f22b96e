// What the operations need of a window, without any toolkit: each has a Qt implementation in the desktop
// program, a console one in the headless tool and a scripted one in tests.
#pragma once

#include <string>

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

// Message boxes: plain (OK, no icon) and critical (OK, error icon). Texts in Windows-1252.
class Messaggi {
 public:
  virtual ~Messaggi() = default;
  virtual void Semplice(const std::string& testo) = 0;
  virtual void Critico(const std::string& testo) = 0;
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

class BarraMuta : public BarraProgresso {
 public:
  double Value() const override { return valore_; }
  void SetValue(double v) override { valore_ = v; }
  void Refresh() override {}

 private:
  double valore_ = 0;
};

}  // namespace support
