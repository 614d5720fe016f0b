// The table of a level's routines. Included like vector_modes.h.
#ifndef QDE_VECTOR_ROUTINES_H
#define QDE_VECTOR_ROUTINES_H

#include "host/QDE/rows/level_routines.h"
#include "host/QDE/rows/vector_colors.h"
#include "host/QDE/rows/vector_mixing.h"
#include "host/QDE/rows/vector_modes.h"
#include "host/QDE/rows/vector_scaling.h"

namespace qde {

// One routine for all colours of foreground and background.
template <typename V, auto kFunction>
constexpr RowRoutines ForAllColors() {
  const RowRoutine routine = CombinePixels<V, ByColors<V, kFunction>>;
  return {routine, routine};
}

// For a level that loads one vector from one place only.
template <typename V>
constexpr LevelRoutines RoutinesWithoutGather() {
  return {{{nullptr, CombinePixels<V, ColoredCopy<V>>},
           ForAllColors<V, Or<V>>(),
           ForAllColors<V, Xor<V>>(),
           ForAllColors<V, Bic<V>>(),
           {CombinePixels<V, ByColors<V, NotCopy<V>>>, CombinePixels<V, ColoredNotCopy<V>>},
           ForAllColors<V, NotOr<V>>(),
           ForAllColors<V, NotXor<V>>(),
           ForAllColors<V, NotBic<V>>(),
           {BlendPixels<V>, BlendPixels<V>},
           ForAllColors<V, AddPin<V>>(),
           ForAllColors<V, AddOver<V>>(),
           ForAllColors<V, SubPin<V>>(),
           ForAllColors<V, Transparent<V>>(),
           ForAllColors<V, Maximum<V>>(),
           ForAllColors<V, SubOver<V>>(),
           ForAllColors<V, Minimum<V>>(),
           ForAllColors<V, Hilite<V>>()},
          {Halve<V>, Twice<V>, nullptr},
          {nullptr, nullptr}};
}

template <typename V>
constexpr LevelRoutines RoutinesWithGather() {
  LevelRoutines routines = RoutinesWithoutGather<V>();
  routines.scaling.gather = Gather<V>;
  routines.colors = {Find<V>, Show<V>};
  return routines;
}

}  // namespace qde

#endif
