// The places of a text that its user fills.
#ifndef K_PLACEHOLDERS_H
#define K_PLACEHOLDERS_H

#include <string_view>

namespace k {

// Whether one text can stand for the other: it has the same print conversions,
// in the same order, since that is the order of the arguments; and the same
// numbered placeholders (@0, ^^L1), whatever their order.
bool HaveSamePlaceholders(std::string_view one, std::string_view other);

}  // namespace k

#endif
