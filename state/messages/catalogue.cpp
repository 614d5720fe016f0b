// The texts of the catalogue.
#include "state/messages/catalogue.h"

#include <iterator>

#include "PXL.h"
#include "platform/K.h"

namespace {

// Entry n stands at index n. The table is writable, since K stores the result
// of a lookup in the entry's cache words; it is initialised in the image,
// without code. The translations are filed under these texts, so their odd
// spellings and blanks stay, and so do the texts that only the host reads.
constinit K_LStrEntry entries[] = {
    {"$$$/OV/PXL/LStr/0000=", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0001=PXL unborn.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0002=graphics structure", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0003=not enough memory to do pattern dither.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0004=missing parent parameter.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0005=depth mismatch creating device.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0006=not enough memory to allocate color table.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0007=invalid palette depth (%d).", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0008=can#{rsquo}t set palette in B&W world.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0009=can#{rsquo}t set palette in non-indexed world.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0010=can#{rsquo}t set palette in shallower world.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0011=can#{rsquo}t set more colors than the world has.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0012=offscreen device", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0013=offscreen pixel map", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0014=couldn#{rsquo}t get standard system color table.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0015=graphics port", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0016=couldn#{rsquo}t find main device, possible corruption.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0017=opening port.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0018=unsupported system palette depth.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0019=no palette for grayscale.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0020=new offscreen pixel buffer", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0021=offscreen pixel buffer", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0022=32-bit QuickDraw not installed.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0023=invalid depth.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0024=can#{rsquo}t change world depth.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0025=checking buffer size.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0026=insufficient memory for %d x %d image buffer.  Try closing some "
     "windows or reducing Resolution.",
     {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0027=changing pixel buffer.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0028=pixel buffer purged!", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0029=row size too large (%d).", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0030=a locked pixel buffer can#{rsquo}t be reallocated.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0031=strange change in pixel buffer.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0032=attempt to copy into wrong size color table.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0033=installing a color table.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0034=can#{rsquo}t get palette from %d-bit world.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0035=sparse luts not implemented.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0036=bad palette size:", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0037=can#{rsquo}t refresh a locked pixel buffer.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0038=installing syncronizer.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0039=unable to kick-start screen-refresh counter.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0040=removing syncronizer.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0041=attempt to syncronize with non-device.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0042=can#{rsquo}t find device.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0043=dummy color table", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0044=calculating inverse table.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0045=closing color port.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0046=opening color port.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0047=attempt to share bitmap of different depths (%d <> %d).", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0048=pattern dither matrix", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0049=lut size mismatch.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0050=steps request out of range.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0051=rebirth.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0052=unbalanced unlock.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0053=this machine does not support color graphics.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0054=checking world", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0055=checking globals", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0056=bad globals.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0057=double or corrupted death.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0058=purging pixels.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0059=can#{rsquo}t purge locked pixels.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0060=can#{rsquo}t make purged pixels unpurgable (load/lock first).",
     {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0061=making pixels purgable.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0062=leaked ^^L1 PXL_Worlds.", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0063=large pixel buffer information", {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0064=Images wider than 4000 pixels can only be displayed to the "
     "screen using Mac OS 8.5 or later.  They can still be rendered at full resolution, and "
     "can be previewed by lowering the composition#{rsquo}s resolution. ",
     {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0065=a PXL_NWorld can only be created at 8, 32, or 64 bits per pixel.",
     {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0066=Unable to allocate enough memory for the current frame. Either "
     "decrease the memory requirements for the rendering of this frame, or increase the "
     "amount of RAM available per rendering process. For more information, see " PXLp_HELP_PAGE,
     {0, 0, 0}},
    {"$$$/OV/PXL/LStr/0067=Unable to allocate enough memory to render the current frame. "
     "Decrease the memory requirements for the rendering of this frame. For more "
     "information, see " PXLp_HELP_PAGE,
     {0, 0, 0}},
    // The end entry, which the count includes.
    {nullptr, {~uintptr_t{0}, ~uintptr_t{0}, 0}},
};

constinit K_LStrCatalogue catalogue = {"PXL", std::size(entries), entries, 0};

}  // namespace

constinit K_LStrCatalogue* PXL_G_zref = &catalogue;

const char* PXLp_LookUpMessage(PXLp_Message message) {
  return K_ZLookupLStrCache(PXL_G_zref, static_cast<std::int32_t>(message), 0, 0);
}
