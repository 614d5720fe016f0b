// The totals of booked memory.
#ifndef K_ACCOUNTING_H
#define K_ACCOUNTING_H

namespace k {

// Notes the current totals in the time line.
void NoteBookedTotals();

}  // namespace k

#endif
