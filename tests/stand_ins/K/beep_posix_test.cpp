// Tests that the signal rings the bell of a terminal only.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "K_host.h"
#include "tests/support/system/system_features.h"

namespace {

// Replaces standard error by a new terminal.
class Terminal {
 public:
  Terminal() : master_(posix_openpt(O_RDWR | O_NOCTTY)), saved_(dup(STDERR_FILENO)) {
    grantpt(master_);
    unlockpt(master_);
    const int terminal = open(ptsname(master_), O_RDWR | O_NOCTTY);
    dup2(terminal, STDERR_FILENO);
    close(terminal);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal() {
    dup2(saved_, STDERR_FILENO);
    close(saved_);
    close(master_);
  }
  char Read() const {
    char c = 0;
    return read(master_, &c, 1) == 1 ? c : '\0';
  }

 private:
  int master_;
  int saved_;
};

TEST(Beep, RingsTheBellOfATerminal) {
  if (!HasPseudoTerminals()) GTEST_SKIP() << "no pseudo-terminal can be opened here";
  const Terminal terminal;
  K_Beep();
  EXPECT_EQ(terminal.Read(), '\a');
}

}  // namespace
