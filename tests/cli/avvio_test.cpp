// Whether the tool waits for Enter after its usage: only with a console of its own, as Explorer gives it.
#ifdef _WIN32
#include <gtest/gtest.h>

#include "../../cli/avvio.h"

namespace {

TEST(Avvio, ConsoleDaSola) {
  DWORD processi[4];
  const DWORD prima = GetConsoleProcessList(processi, 4);
  // The test runner's console, shared with the runner, or none (Wine started from a shell): no wait.
  EXPECT_FALSE(cli::ConsoleDaSola());
  const HANDLE maniglie[] = {GetStdHandle(STD_INPUT_HANDLE), GetStdHandle(STD_OUTPUT_HANDLE),
                             GetStdHandle(STD_ERROR_HANDLE)};
  FreeConsole();
  ASSERT_TRUE(AllocConsole());
  EXPECT_TRUE(cli::ConsoleDaSola());
  FreeConsole();
  EXPECT_FALSE(cli::ConsoleDaSola());
  if (prima > 0) AttachConsole(ATTACH_PARENT_PROCESS);
  SetStdHandle(STD_INPUT_HANDLE, maniglie[0]);
  SetStdHandle(STD_OUTPUT_HANDLE, maniglie[1]);
  SetStdHandle(STD_ERROR_HANDLE, maniglie[2]);
}

}  // namespace
#endif
