// The record of how K's memory changes over time.
#ifndef K_TIME_LINE_H
#define K_TIME_LINE_H

#include <cstdint>

namespace k {

// Tell the time line of a change; one comparison while it is off. They are
// called under the lock that guards the value, so that changes come in their
// order. They call nothing that locks in turn.
void NoteBlocks(std::uint64_t liveBytes, std::uint64_t keptBytes);
void NoteHandles(std::uint64_t bytes);
void NoteBookings(std::int64_t application, std::int64_t system);
void NotePurge();
void NoteFailure();

// Empties the record, which takes the totals in from then on; records them and
// all changes after them; records no more.
void PrepareTimeLine();
void BeginTimeLine();
void StopTimeLine();

}  // namespace k

#endif
