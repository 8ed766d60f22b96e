// What a file handle does the same way on every platform; opening, reading and writing are the back ends'.
#include <utility>

#include "host/macchina.h"

namespace host {

File::File(File&& other) noexcept
    : handle_(std::exchange(other.handle_, kNoHandle)),
      erroreLettura_(std::exchange(other.erroreLettura_, false)) {}

File& File::operator=(File&& other) noexcept {
  if (this != &other) {
    Chiudi();
    handle_ = std::exchange(other.handle_, kNoHandle);
    erroreLettura_ = std::exchange(other.erroreLettura_, false);
  }
  return *this;
}

File::~File() {
  Chiudi();
}

}  // namespace host
