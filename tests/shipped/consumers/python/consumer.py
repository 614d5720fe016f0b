"""Uses the library through ctypes: python3 consumer.py LIBRARY. Prints "good"."""
import ctypes
import sys


class Rect(ctypes.Structure):
    _fields_ = [(name, ctypes.c_int16) for name in ("top", "left", "bottom", "right")]


class ModuleState(ctypes.Structure):
    _fields_ = [("born_mark", ctypes.c_uint32), ("birth_arg", ctypes.c_uint32),
                ("world_count", ctypes.c_int32)]


NO_PLATFORM = 0x0200
LIVE = 0xBECCA


def main(library):
    pxl = ctypes.CDLL(library)
    state = ModuleState.in_dll(pxl, "PXLp_G")
    pxl.PXLp_GetPixBaseAddr.restype = ctypes.c_void_p
    pxl.PXLp_GetPixBaseAddr.argtypes = [ctypes.c_void_p]
    assert pxl.PXL_Birth(7) == 0
    assert (state.born_mark, state.birth_arg) == (LIVE, 7)

    bounds = Rect(0, 0, 3, 5)
    world = ctypes.c_void_p()
    assert pxl.PXL_NewWorld(None, NO_PLATFORM, ctypes.byref(bounds), 32, 0, None,
                            ctypes.byref(world)) == 0
    assert state.world_count == 1
    assert pxl.PXL_LockPixels(0, world, None) == 0
    assert pxl.PXL_ClearWorldToLong(world, 0x04030201) == 0
    pixel = (ctypes.c_ubyte * 4).from_address(pxl.PXLp_GetPixBaseAddr(world))
    assert list(pixel) == [1, 2, 3, 4]
    pxl.PXL_UnlockPixels(world)
    assert pxl.PXL_DisposeWorld(world) == 0
    assert pxl.PXL_Death() == 0 and state.born_mark == 0
    print("good")


main(sys.argv[1])
