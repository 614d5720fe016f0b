// The record of how K's memory changes over time.
#ifndef K_TIME_LINE_H
#define K_TIME_LINE_H

#include <cstdint>

namespace k {

// Note a change in the time line; one comparison while it is off. Callers hold the
// lock that guards the value, so that changes are recorded in order. They take the
// time line's own lock and no other.
void NoteBlocks(std::uint64_t liveBytes, std::uint64_t keptBytes);
void NoteHandles(std::uint64_t bytes);
void NoteBookings(std::int64_t application, std::int64_t system);
void NotePurge();
void NoteFailure();

// Discards all samples; from now on changes set the current totals but make no
// samples.
void PrepareTimeLine();
// Makes a first sample of the totals, and one of each later change.
void BeginTimeLine();
void StopTimeLine();

}  // namespace k

#endif
