// Suppresses the leaks of tinyexr, which does not free all of its memory when it
// finds a damaged file. Leaks of our own reader are still reported.
extern "C" const char* __lsan_default_suppressions();

const char* __lsan_default_suppressions() {
  return "leak:tinyexr::\n"
         "leak:ParseEXRHeaderFromMemory\n"
         "leak:LoadEXRImageFromMemory\n";
}
