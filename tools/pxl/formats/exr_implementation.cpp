// The library that reads and writes OpenEXR is headers alone; its code comes
// from here.
#include <zlib.h>
#define TINYEXR_IMPLEMENTATION
#include <tinyexr.h>
