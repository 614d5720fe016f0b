// SDL: surfaces over the pictures' own pixels. Deeper pixels go as several of 32
// bits.
#include <SDL.h>

#include <memory>
#include <stdexcept>

#include "bench/subjects/peers.h"

namespace bench {
namespace {

using Surface = std::shared_ptr<SDL_Surface>;

Surface SurfaceOf(const Picture& picture) {
  const int width = picture.width * picture.pixelBytes / 4;
  SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormatFrom(picture.pixels, width, picture.height,
                                                            32, static_cast<int>(picture.rowBytes),
                                                            SDL_PIXELFORMAT_ARGB8888);
  if (surface == nullptr) throw std::runtime_error(SDL_GetError());
  SDL_SetSurfaceBlendMode(surface, SDL_BLENDMODE_NONE);
  return {surface, SDL_FreeSurface};
}

Work Copy(const Picture& from, const Picture& to) {
  const Surface source = SurfaceOf(from);
  const Surface destination = SurfaceOf(to);
  return Repeat([=] { SDL_BlitSurface(source.get(), nullptr, destination.get(), nullptr); });
}

Work Fill(const Picture&, const Picture& to) {
  const Surface destination = SurfaceOf(to);
  return Repeat([=] { SDL_FillRect(destination.get(), nullptr, kFillWord); });
}

Work Scale(const Picture& from, const Picture& to) {
  const Surface source = SurfaceOf(from);
  const Surface destination = SurfaceOf(to);
  return Repeat([=] { SDL_BlitScaled(source.get(), nullptr, destination.get(), nullptr); });
}

// As many bytes as floats take; it clears them.
Work MakeFrame(int width, int height) {
  return Repeat([=] {
    SDL_FreeSurface(
        SDL_CreateRGBSurfaceWithFormat(0, width * 4, height, 32, SDL_PIXELFORMAT_ARGB8888));
  });
}

[[maybe_unused]] const bool kAdded =
    AddPeer("SDL", Operation::Copy, Copy) && AddPeer("SDL", Operation::Fill, Fill) &&
    AddPeer("SDL", Operation::HalveNearest, Scale) &&
    AddPeer("SDL", Operation::DoubleNearest, Scale) && AddFramePeer("SDL surface", MakeFrame);

}  // namespace
}  // namespace bench
