// Whether there is memory, or a view of a file, at an address.
#ifndef TESTS_SUPPORT_SYSTEM_MEMORY_STATE_H
#define TESTS_SUPPORT_SYSTEM_MEMORY_STATE_H

bool IsMapped(void* address);

#endif
