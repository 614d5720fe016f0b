// The totals of memory that others booked.
#ifndef K_ACCOUNTING_H
#define K_ACCOUNTING_H

namespace k {

// Tells the time line of the totals as they are.
void NoteBookedTotals();

}  // namespace k

#endif
