// Drives through the platform's volume calls, shaped as the scripting runtime's Drive object gives them.
#ifdef _WIN32

#include "host/accesso_dischi.h"
#include "host/interno_win32.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace host {
namespace {

int TipoDaPiattaforma(UINT t) {
  switch (t) {
    case DRIVE_REMOVABLE:
      return kDriveRimovibile;
    case DRIVE_FIXED:
      return kDriveFisso;
    case DRIVE_REMOTE:
      return kDriveRete;
    case DRIVE_CDROM:
      return kDriveCdRom;
    case DRIVE_RAMDISK:
      return kDriveRam;
    default:
      return kDriveSconosciuto;
  }
}

// The share behind a network drive. The call lives in mpr.dll, which the program loads only for this.
std::string Condivisione(char lettera) {
  HMODULE mpr = ::LoadLibraryA("mpr.dll");
  if (!mpr) return {};
  using Funzione = DWORD(WINAPI*)(LPCSTR, LPSTR, LPDWORD);
  const auto f =
      reinterpret_cast<Funzione>(reinterpret_cast<void (*)()>(::GetProcAddress(mpr, "WNetGetConnectionA")));
  std::string risultato;
  if (f) {
    const char locale[3] = {lettera, ':', '\0'};
    char remoto[MAX_PATH + 1] = {};
    DWORD n = MAX_PATH;
    if (f(locale, remoto, &n) == NO_ERROR) risultato = remoto;
  }
  ::FreeLibrary(mpr);
  return risultato;
}

}  // namespace

bool MisuraPiattaforma(const std::string& radice, MisureVolume* misure) {
  const char l = LetteraDrive(radice);
  if (!l) return false;
  const char percorso[4] = {l, ':', '\\', '\0'};
  ULARGE_INTEGER disponibili{}, totali{}, liberi{};
  if (!::GetDiskFreeSpaceExA(percorso, &disponibili, &totali, &liberi)) return false;
  misure->disponibili = disponibili.QuadPart;
  misure->totali = totali.QuadPart;
  misure->liberi = liberi.QuadPart;
  return true;
}

bool LeggiDrive(const std::string& radice, OggettoDrive* drive, int* err) {
  if (err) *err = kNessunErrore;
  const char l = LetteraDrive(radice);
  if (!l || !((::GetLogicalDrives() >> (l - 'A')) & 1u)) {
    if (err) *err = kErrDeviceUnavailable;
    return false;
  }
  const char percorso[4] = {l, ':', '\\', '\0'};
  *drive = OggettoDrive{};
  drive->DriveLetter = std::string(1, l);
  const UINT tipo = ::GetDriveTypeA(percorso);
  drive->DriveType = TipoDaPiattaforma(tipo);
  if (tipo == DRIVE_REMOTE) drive->ShareName = Condivisione(l);
  char volume[MAX_PATH + 1] = {};
  DWORD seriale = 0;
  MisureVolume m;
  // A drive without its medium fails both; Wine answers the first even for a drive whose target is gone.
  const bool volumeLetto =
      ::GetVolumeInformationA(percorso, volume, MAX_PATH, &seriale, nullptr, nullptr, nullptr, 0) != 0;
  drive->SpazioLetto = MisuraVolume(percorso, &m);
  drive->IsReady = volumeLetto && drive->SpazioLetto;
  if (!drive->IsReady) {
    drive->SpazioLetto = false;
    return true;
  }
  drive->VolumeName = volume;
  drive->SerialNumber = static_cast<std::int32_t>(seriale);
  drive->FreeSpace = m.disponibili;
  drive->TotalSize = m.totali;
  return true;
}

}  // namespace host

#endif  // _WIN32
