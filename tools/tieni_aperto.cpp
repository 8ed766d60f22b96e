// Holds a file open without sharing it, as a program that keeps its data file open does, so that a test can
// run the tool meanwhile: usage: checkordl_tieni FILE SIGN STOP. Once FILE is held, the file SIGN is made;
// the hold ends when the file STOP appears, or after two minutes so that a test that dies leaves no
// process behind. Exit 1 when FILE cannot be opened.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  const HANDLE h =
      ::CreateFileA(argv[1], GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (h == INVALID_HANDLE_VALUE) return 1;
  const HANDLE segno =
      ::CreateFileA(argv[2], GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (segno != INVALID_HANDLE_VALUE) ::CloseHandle(segno);
  for (int i = 0; i < 2400 && ::GetFileAttributesA(argv[3]) == INVALID_FILE_ATTRIBUTES; ++i) ::Sleep(50);
  ::CloseHandle(h);
  return 0;
}
