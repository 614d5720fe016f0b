// The libraries that read and write PNG and draw letters are headers alone;
// their code comes from here.
#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#define STB_IMAGE_IMPLEMENTATION
#include <stb/stb_image.h>
#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>
#define STB_TRUETYPE_IMPLEMENTATION
#include <stb/stb_truetype.h>
