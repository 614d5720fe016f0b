// The code of the libraries that are headers alone: they read and write OpenEXR
// and PNG files and draw letters.
#include <zlib.h>
#define TINYEXR_IMPLEMENTATION
#include <tinyexr.h>
#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#define STB_IMAGE_IMPLEMENTATION
#include <stb/stb_image.h>
#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>
#define STB_TRUETYPE_IMPLEMENTATION
#include <stb/stb_truetype.h>
