// Streams of the C library: files with names in UTF-8, and the terminal.
#ifndef K_STREAMS_H
#define K_STREAMS_H

#include <cstdio>
#include <string>

namespace k {

// Opens a file for reading bytes; the caller closes it. Null, with errno, when it
// cannot be opened.
std::FILE* OpenFile(const std::string& path);

// Rings the terminal's bell when standard error is a terminal.
void RingBell();

}  // namespace k

#endif
