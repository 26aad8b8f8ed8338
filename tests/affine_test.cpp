// The homogeneous point transform: the defined term order bit for bit on
// every layout, the tiny-w rule, argument checks and the parallel threshold.
#include <gtest/gtest.h>
#include <omp.h>

#include <cfloat>
#include <cmath>
#include <vector>

#include "support.h"

namespace {

using kt::Desc;
using Pts = kt::Objects<float>;

// The transform written plainly; false for a tiny w.
bool transform(Pts& m, float x, float y, float z, float* out)
{
    auto a = [&](int i, int j) { return m.at(0, i, j); };
    const float w = ((a(3, 0) * x + a(3, 3)) + a(3, 1) * y) + a(3, 2) * z;
    if (std::fabs(w) <= 1.1754944e-38f) {
        out[0] = out[1] = out[2] = 3.4028235e38f;
        return false;
    }
    const float q = 1 / w;
    for (int i = 0; i < 3; ++i) out[i] = (((a(i, 0) * x + a(i, 3)) + a(i, 1) * y) + a(i, 2) * z) * q;
    return true;
}

kelStatus run(Pts& m, Pts& src, Pts& dst)
{
    return kelmAffineTransform3DH_mva_32f(m.base(), m.rowStride(), m.elemStride(), src.base(), src.objStride(),
                                          src.elemStride(), dst.base(), dst.objStride(), dst.elemStride(),
                                          src.count());
}

// A matrix whose w stays away from 0 for points in [-4, 4).
Pts matrix(Desc d, unsigned seed)
{
    Pts m(d, 1, 4, 4, seed);
    m.at(0, 3, 0) = 0.125f, m.at(0, 3, 1) = -0.25f, m.at(0, 3, 2) = 0.0625f, m.at(0, 3, 3) = 3;
    return m;
}

// Returns the expected status, checks every point bit for bit.
kelStatus expect_transformed(Pts& m, Pts& src, Pts& dst)
{
    kelStatus want = kelOk;
    for (int k = 0; k < src.count(); ++k) {
        float r[3];
        if (!transform(m, src.at(k, 0), src.at(k, 1), src.at(k, 2), r)) want = kelErrTinyDivisor;
        for (int i = 0; i < 3; ++i) EXPECT_TRUE(kt::same_bits(dst.at(k, i), r[i])) << "point " << k << " coord " << i;
    }
    EXPECT_TRUE(dst.canaries_intact());
    return want;
}

TEST(Affine, MatchesPlainTransformOnEveryLayout)
{
    // Contig points of width 3 are packed (12 bytes apart), of width 4 they
    // have unit element strides and a gap; Strided ones an element stride of
    // 8.  Any non-unit element stride takes the general kernel.
    struct Layout {
        Desc m, src;
        int srcW;
        Desc dst;
        int dstW;
    };
    const Layout layouts[] = {{Desc::Contig, Desc::Contig, 3, Desc::Contig, 3},
                              {Desc::Contig, Desc::Contig, 4, Desc::Contig, 4},
                              {Desc::Contig, Desc::Contig, 3, Desc::Contig, 4},
                              {Desc::Contig, Desc::Contig, 3, Desc::Strided, 3},
                              {Desc::Strided, Desc::Contig, 3, Desc::Contig, 3},
                              {Desc::Contig, Desc::Strided, 3, Desc::Contig, 3},
                              {Desc::Strided, Desc::Strided, 3, Desc::Strided, 3}};
    for (const Layout& l : layouts)
        for (int count : {1, 3, 4, 5, 8, 11, 130, 131, 1001}) {
            SCOPED_TRACE(testing::Message() << kt::name(l.m) << " " << kt::name(l.src) << l.srcW << " "
                                            << kt::name(l.dst) << l.dstW << " count " << count);
            Pts m = matrix(l.m, unsigned(count));
            Pts src(l.src, count, 1, l.srcW, unsigned(count + 1)), dst(l.dst, count, 1, l.dstW, 0);
            const auto before = src.snapshot();
            const kelStatus st = run(m, src, dst);
            EXPECT_EQ(st, expect_transformed(m, src, dst));
            EXPECT_TRUE(src.unchanged_since(before));
        }
}

TEST(Affine, IdentityCopiesPoints)
{
    Pts m(Desc::Contig, 1, 4, 4);
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) m.at(0, i, j) = i == j;
    for (Desc d : {Desc::Contig, Desc::Strided}) {
        Pts src(d, 13, 1, 3, 9), dst(d, 13, 1, 3, 0);
        ASSERT_EQ(run(m, src, dst), kelOk);
        for (int k = 0; k < 13; ++k)
            for (int i = 0; i < 3; ++i) EXPECT_TRUE(kt::same_bits(dst.at(k, i), src.at(k, i)));
    }
}

// Row 3 = (1, 0, 0, 0): w is the point's x.  A tiny w anywhere in the array
// (lane blocks and tail, serial and parallel runs) marks only its own point
// and makes the call's status.
TEST(Affine, TinyDivisorMarksPointAndGoesOn)
{
    struct Case {
        float w;
        bool tiny;
    };
    const Case cases[] = {{1.1754944e-38f, true}, {-1.1754944e-38f, true}, {1.2e-38f, false}, {0.0f, true},
                          {-0.0f, true},          {1e-45f, true},          {1.0f, false}};
    for (const Case& c : cases)
        for (Desc d : {Desc::Contig, Desc::Strided})
            for (int count : {9, 131, 2000})
                for (int bad : {0, 5, 13, count - 1}) {  // 13: the upper lanes of a block of sixteen
                    if (bad >= count) continue;
                    SCOPED_TRACE(testing::Message() << "w " << c.w << " " << kt::name(d) << " count " << count
                                                    << " at " << bad);
                    Pts m = matrix(Desc::Contig, 3);
                    m.at(0, 3, 0) = 1, m.at(0, 3, 1) = 0, m.at(0, 3, 2) = 0, m.at(0, 3, 3) = 0;
                    Pts src(d, count, 1, 3, 4), dst(d, count, 1, 3, 0);
                    for (int k = 0; k < count; ++k) src.at(k, 0) = 1.5f + float(k % 3);  // w = x
                    src.at(bad, 0) = c.w;
                    kt::Threads t(2);
                    const kelStatus st = run(m, src, dst);
                    EXPECT_EQ(st, c.tiny ? kelErrTinyDivisor : kelOk);
                    EXPECT_EQ(st, expect_transformed(m, src, dst));
                    if (c.tiny) {
                        EXPECT_EQ(dst.at(bad, 1), FLT_MAX);
                    }
                }
}

// 6·count + 16 above 800 runs in parallel: 131 points do, 130 do not.  Inside
// an active region the runtime refuses to fork and a parallel run does only
// its first block, which shows the path taken.
TEST(Affine, ThresholdBetween130And131Points)
{
    kt::Threads two(2);
    for (Desc d : {Desc::Contig, Desc::Strided})
        for (int count : {130, 131}) {
            Pts m = matrix(Desc::Contig, 1);
            Pts src(d, count, 1, 3, 2), full(d, count, 1, 3, 0), nested(d, count, 1, 3, 0);
            ASSERT_EQ(run(m, src, full), kelOk);
            const int saved = omp_get_max_active_levels();
            omp_set_max_active_levels(1);
            kelStatus st = kelErrFail;
#pragma omp parallel num_threads(2)
            if (omp_get_thread_num() == 0) st = run(m, src, nested);
            omp_set_max_active_levels(saved);
            ASSERT_EQ(st, kelOk);
            const int done = count > 130 ? (count + 1) / 2 : count;
            for (int k = 0; k < count; ++k)
                EXPECT_EQ(nested.at(k, 2) == full.at(k, 2), k < done) << kt::name(d) << " " << count << " " << k;
        }
}

}  // namespace
