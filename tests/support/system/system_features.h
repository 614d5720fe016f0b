// Features that a bare system may lack; tests that need one are skipped there.
#ifndef TESTS_SUPPORT_SYSTEM_SYSTEM_FEATURES_H
#define TESTS_SUPPORT_SYSTEM_SYSTEM_FEATURES_H

// Whether this process can open a pseudo-terminal.
bool HasPseudoTerminals();

// Whether the system shows its processes as files, where that is its way.
bool HasProcessFiles();

#endif
