#ifndef TESTS_SUPPORT_SYSTEM_MEMORY_STATE_H
#define TESTS_SUPPORT_SYSTEM_MEMORY_STATE_H

// Whether there is memory, or a view of a file, at the address.
bool IsMapped(void* address);

#endif
