#include <cstring>

#include "support.h"

TEST(Version, RecordIsConstantAndNamesTheSoname)
{
    const KelLibVersion* v = kelmGetLibVersion();
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v, kelmGetLibVersion());
    EXPECT_EQ(v->versionMajor, 5);
    EXPECT_EQ(v->versionMinor, 2);
    EXPECT_EQ(v->buildMajor, 108);
    EXPECT_EQ(v->buildNumber, 345);
    EXPECT_EQ(std::memcmp(v->cpuTag, "v8\0\0", 4), 0);
    EXPECT_STREQ(v->libName, "libkelmv8.so.5.2");
    EXPECT_STREQ(v->versionText, "5.2");
    EXPECT_STREQ(v->buildDate, "Jul 11 2007");
}

TEST(Version, CacheSizeQuery)
{
    int size = -1;
    EXPECT_EQ(kelGetMaxCacheSizeB(&size), 0);
    EXPECT_GE(size, 0);
    EXPECT_EQ(kelGetMaxCacheSizeB(nullptr), kelErrNullPointer);
}

TEST(Version, ThreadCountCalls)
{
    const int saved = kelGetNumThreads();
    EXPECT_EQ(kelSetNumThreads(3), 3);
    EXPECT_EQ(threads_omp_of_n_kel, 3);
    EXPECT_EQ(kelSetNumThreads(0), 1);
    kelSetNumThreads(saved);
}
