// The ways in which the calls of the imported libraries can fail.
#ifndef TESTS_SUPPORT_MODULE_WAYS_H
#define TESTS_SUPPORT_MODULE_WAYS_H

#include <ostream>
#include <string>
#include <vector>

enum class Way {
  Fails,          // as the recorder fails it: null, false, or an error
  FailsFromHere,  // this call and all later ones of the name
  MemoryFull,     // the drawing layer's error for lack of memory
  GivesUp,        // the purge loop makes no attempt
  GivesNothing,   // the purge loop makes no attempt, and returns 0
  GivesCode,      // the purge loop succeeds, and yet returns a code
  NoMap,          // the surface has no pixel map from now on
  Answers99,      // K makes another code of a reported error
  AnswersZero,    // K translates a reported exception to 0
  ThrowsException,
  ThrowsLong,
  ThrowsZero,
  ThrowsText,
  // After the call, the module's next `new` for ...
  NewProvider,
  NewName,
  NewNumberedName,
  NewFile,
  NewInsideFile,
  NewFirstKey,
  NewSecondKey,
};

std::ostream& operator<<(std::ostream& stream, Way way);

// All ways that a call of this name has in every operation; empty for one that
// cannot fail. An unknown name throws std::logic_error.
std::vector<Way> WaysOf(const std::string& name);

// The names of all imports, and of malloc and free.
std::vector<std::string> ImportedCalls();

// Makes the call of this name that is just being logged fail.
void FailCurrentCall(const std::string& name, Way way);

// Whether a call of this name reports something to the user.
bool IsReport(const std::string& name);
bool IsThrow(Way way);

#endif
