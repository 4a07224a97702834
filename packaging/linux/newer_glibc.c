/* What this compiler's C++ library takes from a C library newer than Debian 11's. The names are hidden: each program
   and library has its own. */
#include <stdint.h>
#include <stdlib.h>
#include <sys/random.h>

#pragma GCC visibility push(hidden)

/* Says whether the process has one thread only, so that counts need no atomic operations: never taken for granted. */
char __libc_single_threaded = 0;

uint32_t arc4random(void);
uint32_t arc4random(void) {
    uint32_t number;
    if (getentropy(&number, sizeof number) != 0) {
        abort();
    }
    return number;
}
