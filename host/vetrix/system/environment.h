// The environment of the process.
#ifndef VETRIX_ENVIRONMENT_H
#define VETRIX_ENVIRONMENT_H

#include <string>

namespace vetrix {

// The value of a variable, in UTF-8 where the system knows its encoding; empty
// when there is none.
std::string Variable(const char* name);

}  // namespace vetrix

#endif
