// A file that exists but cannot be read, as one another program holds open: held open without sharing on
// Windows, a pipe (no file to read) on the host.
#pragma once

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/stat.h>
#endif

#include <gtest/gtest.h>

#include <string>

#include "host/macchina.h"
#include "macchina_prova.h"

struct Illeggibile {
  // `host`: the file's path on the machine running the test.
  explicit Illeggibile(const std::string& host) {
#ifdef _WIN32
    MacchinaProva::ScriviHost(host, "tenuto");
    h = ::CreateFileA(host.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(h, INVALID_HANDLE_VALUE);
#else
    EXPECT_EQ(::mkfifo(host.c_str(), 0644), 0);
#endif
  }
  ~Illeggibile() {
#ifdef _WIN32
    ::CloseHandle(h);
#endif
  }
  Illeggibile(const Illeggibile&) = delete;
  Illeggibile& operator=(const Illeggibile&) = delete;
  // The platform's error for it.
#ifdef _WIN32
  static constexpr int kErrore = host::kErrFileAlreadyOpen;
  HANDLE h = INVALID_HANDLE_VALUE;
#else
  static constexpr int kErrore = host::kErrPathFileAccess;
#endif
};
