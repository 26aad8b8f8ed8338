/* kelm.h is plain C99: include it, link the library and call it. */
#include <string.h>

#include "kelm.h"

int main(void)
{
    const KelLibVersion* v = kelmGetLibVersion();
    kel32f a[3] = {1, 2, 3}, b[3] = {4, 5, 6}, c[3];
    if (kelmAdd_vv_32f(a, 4, b, 4, c, 4, 3) != kelOk || c[2] != 9.0f) return 1;
    return strcmp(v->libName, "libkelmv8.so.5.2") == 0 ? 0 : 1;
}
