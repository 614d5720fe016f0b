// Switches the time line on and off.
#include "K_host.h"
#include "host/K/events/time_line.h"
#include "host/K/handles/handle_store.h"
#include "host/K/limits/accounting.h"
#include "host/K/pool/pool.h"

namespace {

void Start() {
  k::PrepareTimeLine();
  k::Pool::Instance().NoteTotals();
  k::HandleStore::Instance().NoteTotals();
  k::NoteBookedTotals();
  k::BeginTimeLine();
}

}  // namespace

void K_SetTimeLine(Boolean on) {
  if (on != 0) {
    Start();
  } else {
    k::StopTimeLine();
  }
}
