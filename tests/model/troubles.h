// The module's surroundings while a sequence is played: failures of the imported
// libraries, and whether a surface's pixels are purged.
#ifndef TESTS_MODEL_TROUBLES_H
#define TESTS_MODEL_TROUBLES_H

#include <map>
#include <set>
#include <string>

#include "tests/model/world_model.h"

class Troubles {
 public:
  // To be called in every call of an import.
  void Observe(const std::string& name);
  // The failure until the next call of Begin.
  void Begin(Trouble trouble);
  void PurgePixels() { purged_ = true; }

  // Those that came to bear so far.
  [[nodiscard]] const std::set<Trouble>& Met() const { return met_; }

 private:
  bool Strikes(const std::string& name);

  Trouble trouble_ = Trouble::None;
  std::map<std::string, int> calls_;
  bool purged_ = false;
  std::set<Trouble> met_;
};

#endif
