// A planted environment for the report and the findings: a 32-bit tomb4.exe on 64-bit Windows whose imports
// resolve beside it, in the system folder, as an API set and nowhere; compatibility layers in both hives;
// marked files; Controlled Folder Access on; the VirtualStore; a member another program held open.
#pragma once

#include "formats/ambiente.h"
#include "host/macchina.h"

inline formats::Ambiente AmbienteProva() {
  using host::Origine;
  formats::Ambiente a;
  a.programma = "CheckORDL";
  a.versioneProgramma = "1.0";
  a.bitProgramma = 32;
  a.dataLocale = "2026-11-25T17:05:03";
  a.scartoUtcMinuti = 60;
  host::SistemaWindows& w = a.windows;
  w.prodotto = "Windows 10 Pro";
  w.rilascio = "22H2";
  w.maggiore = 10;
  w.build = 19045;
  w.windows64 = w.wow64 = w.uac = w.virtualizzazione = w.zoneLeggibili = true;
  w.codePage = 1252;
  w.dpi = 144;
  w.accessoControllato = 1;
  w.dep = 3;
  const std::string trle = "C:\\Users\\Mario\\Documents\\Trle\\";
  host::Eseguibile tomb4{trle + "tomb4.exe", host::MacchinaPe::x86, {}, "", {}, 3};
  tomb4.importazioni = {
      {"KERNEL32.dll", Origine::sistema, "C:\\Windows\\SysWOW64\\kernel32.dll", host::kZonaNessuna},
      {"d3dx9_43.dll", Origine::nonTrovata, "", host::kZonaNessuna},
      {"MSVCR100.dll", Origine::nonTrovata, "", host::kZonaNessuna},
      {"vcruntime140.dll", Origine::nonTrovata, "", host::kZonaNessuna},
      {"binkw32.dll", Origine::cartellaEseguibile, trle + "binkw32.dll", 3},
      {"trng.dll", Origine::nonTrovata, "", host::kZonaNessuna},
      {"api-ms-win-crt-runtime-l1-1-0.dll", Origine::apiSet, "", host::kZonaNessuna},
  };
  tomb4.livelli = {{"HKCU", "~ RUNASADMIN WINXPSP3"}, {"HKLM (32-bit)", "$ HIGHDPIAWARE FOOBAR"}};
  host::Eseguibile ordl{"C:\\Program Files (x86)\\Ordelio\\ordl2009.exe",
                        host::MacchinaPe::x86,
                        {},
                        "",
                        {},
                        host::kZonaNessuna};
  ordl.importazioni = {
      {"USER32.dll", Origine::sistema, "C:\\Windows\\SysWOW64\\user32.dll", host::kZonaNessuna}};
  ordl.livelli = {{"HKLM", "~ 640X480"}};
  // Not a level tool: its layers are its own business.
  host::Eseguibile disinstalla{"C:\\Program Files (x86)\\Ordelio\\unins000.exe",
                               host::MacchinaPe::x64,
                               {},
                               "",
                               {{"HKCU", "WINXPSP3"}},
                               host::kZonaNessuna};
  host::Eseguibile rotto{
      trle + "rotto.exe", host::MacchinaPe::nessuna, {}, "the import table runs past the end", {},
      host::kZonaNessuna};
  a.eseguibili = {{formats::CartellaEseguibile::editor, tomb4},
                  {formats::CartellaEseguibile::ordelio, ordl},
                  {formats::CartellaEseguibile::ordelio, disinstalla},
                  {formats::CartellaEseguibile::editor, rotto}};
  a.membriVirtuali = {"C:\\Program Files (x86)\\Ordelio\\ordelio.prf"};
  a.fileVirtuali = {"C:\\Program Files (x86)\\Ordelio\\backup_trle\\a.tr4"};
  a.fileVirtualiTotale = 1201;
  a.nonLetti = {{"C:\\Users\\Mario\\Documents\\Trle\\script.dat", host::kErrFileAlreadyOpen}};
  return a;
}
