// Attributes as Wine gives them, shared by the Wine back end's enumeration and its one-pass folder read.
#pragma once
#ifndef _WIN32

#include <sys/stat.h>

#include <string>

namespace host {

// Folder 16, else archive 32; read-only 1 when no one may write; hidden 2 and system 4 from user.DOSATTRIB,
// and hidden for a name with a leading dot unless the prefix shows dot files.
int AttributiWine(const std::string& hostPath, const struct stat& st, const std::string& nomeWin);

// Wine's order of a folder's entries, by their host names: without regard to case (letters compared in
// upper case, so "_" comes after them), then by the exact name.
bool PrimaInCartella(const std::string& a, const std::string& b);

// The prefix's ShowDotFiles setting, read once per prefix.
bool MostraPuntiFile();

}  // namespace host

#endif
