/* A C99 program compiled and linked with the flags pkg-config gives. */
#include <kelm.h>

#include <stdio.h>
#include <string.h>

int main(void)
{
    const KelLibVersion* v = kelmGetLibVersion();
    printf("%s %d.%d (build %d.%d, %s), %d threads\n", v->libName, v->versionMajor, v->versionMinor,
           v->buildMajor, v->buildNumber, v->buildDate, kelGetNumThreads());
    return strcmp(v->libName, "libkelmv8.so.5.2") == 0 && v == kelmGetLibVersion() ? 0 : 1;
}
