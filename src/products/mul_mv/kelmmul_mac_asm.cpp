// The exported 32f matrix-by-constant kernels.  They check nothing (their
// callers have) and are not called by the library's own entries; they run
// the same code as the kelmMul_mac kernels, so results are identical.
#include "kernels.h"

namespace kelm {

#define KELM_MAC_ASM(N)                                                                                        \
    extern "C" KELM_API kelStatus ownmMul_mac_32f_##N##x##N##_ASM(const float* src, int srcObjStride,           \
                                                                  int srcRowStride, float val, float* dst,     \
                                                                  int dstObjStride, int dstRowStride, int count) \
    {                                                                                                          \
        return mac32_fixed<N>(src, srcObjStride, srcRowStride, val, dst, dstObjStride, dstRowStride, count);   \
    }                                                                                                          \
    extern "C" KELM_API kelStatus ownmMul_mac_32f_##N##x##N##_S2_ASM(                                          \
        const float* src, int srcObjStride, int srcRowStride, int srcElemStride, float val, float* dst,        \
        int dstObjStride, int dstRowStride, int dstElemStride, int count)                                      \
    {                                                                                                          \
        return ownkelmMul_mc{N, N}(count, mats(src, srcObjStride, srcRowStride, srcElemStride), Value<float>{val}, \
                                   mats(dst, dstObjStride, dstRowStride, dstElemStride));                      \
    }
KELM_MAC_ASM(3)
KELM_MAC_ASM(4)
KELM_MAC_ASM(5)
KELM_MAC_ASM(6)
#undef KELM_MAC_ASM

extern "C" KELM_API kelStatus ownkelmMul_mac_32f_P_ASM(const float* const* src, int srcObjShift, int srcObjStride,
                                                       float val, float* const* dst, int dstObjShift,
                                                       int dstObjStride, int width, int height, int count)
{
    return ownkelmMul_mc{height, width}(count, ptrs<float>(src, srcObjShift, srcObjStride, width), Value<float>{val},
                                        ptrs<float>(dst, dstObjShift, dstObjStride, width));
}

}  // namespace kelm
