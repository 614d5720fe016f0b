// Plays a sequence to the module and to the model, and compares them.
#ifndef TESTS_MODEL_PLAYER_H
#define TESTS_MODEL_PLAYER_H

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "tests/model/sequence.h"
#include "tests/model/troubles.h"
#include "tests/support/module/contract.h"

class Player : public Contract {
 protected:
  enum class Memory { Heap, Pool };

  // Where module and model first differ, or nothing. All frames of a sequence
  // come from one kind of memory.
  std::string Play(const Sequence& sequence, Memory memory);

  std::set<Trouble> met_;
  int played_ = 0;

 private:
  void Begin(Memory memory);
  std::string PlayStep(const Step& step);
  std::string End();
  [[nodiscard]] bool Applies(const Step& step) const;
  Answer AskModel(const Step& step);
  Answer AskModule(const Step& step);
  std::int32_t Call(const Step& step, Answer& answer);
  std::int32_t CallForPixels(const Step& step, Answer& answer);
  std::int32_t New(const Step& step);
  std::int32_t Dispose();
  void BookBytes();

  std::string Compare(const Answer& module, const Answer& model);
  std::string CompareRecord();
  std::string CompareAddress();
  std::string CompareSurroundings();
  std::string ComparePixels(std::int32_t value);
  void DifferInNumber(const std::string& what, std::int64_t module, std::int64_t model);
  template <typename Module, typename Model>
  void Differ(const std::string& what, Module module, Model model) {
    DifferInNumber(what, static_cast<std::int64_t>(module), static_cast<std::int64_t>(model));
  }

  [[nodiscard]] PXL_WorldHandle Target() const { return model_.live ? worldH_ : callerH_; }

  WorldModel model_;
  Troubles troubles_;
  PXL_WorldHandle callerH_ = nullptr;
  PXL_WorldHandle worldH_ = nullptr;
  std::vector<PXL_PixelProvider*> lost_;
  std::int64_t applicationBytes_ = 0;
  std::int64_t systemBytes_ = 0;
  std::string difference_;
};

#endif
