/* The program that does nothing: what is measured beside it is the price of running a program.
   Where a restore needs an answer it has that of a panel without templates, addresses and items,
   but with the packages of any application. */
#include <stdio.h>
#include <string.h>

enum { kPackages = 500 };

static void listPackages(void) {
    printf("<packages>");
    for (int number = 0; number < kPackages; ++number) {
        printf("<package><name>app%d</name><version>1</version></package>", number);
    }
    printf("</packages>");
}

int main(int argc, char** argv) {
    const char* const word = argc > 1 ? argv[1] : "";
    if (strcmp(word, "-x") == 0) return 1;
    if (strcmp(word, "-xi") == 0) printf("<ipinfo/>");
    if (strcmp(word, "--list") == 0) printf("<sapp-items/>");
    if (strcmp(word, "--info-packages-xml") == 0) listPackages();
    return 0;
}
