#include <stdio.h>
#include "kelm.h"
int main(void) { const KelLibVersion* v = kelmGetLibVersion(); printf("%s\n", v->libName); return 0; }
