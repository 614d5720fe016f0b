// Compares the placeholders of texts.
#ifndef K_PLACEHOLDERS_H
#define K_PLACEHOLDERS_H

#include <string_view>

namespace k {

// Whether one text can replace the other: both have the same print conversions in
// the same order, which is that of the arguments, and the same numbered
// placeholders (@0, ^^L1) in any order.
bool HaveSamePlaceholders(std::string_view one, std::string_view other);

}  // namespace k

#endif
