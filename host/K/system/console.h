// The terminal of the process.
#ifndef K_CONSOLE_H
#define K_CONSOLE_H

namespace k {

// Sounds the terminal's bell when standard error is a terminal.
void RingBell();

}  // namespace k

#endif
