// The world around the module while a sequence is played: what goes wrong in
// the imported libraries, and whether a surface's pixels are still there.
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
  // What goes wrong until the next call of this.
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
