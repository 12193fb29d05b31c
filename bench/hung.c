// Becomes the tool that REAL_TOOLS has by the same name, but says nothing for longer than anybody waits while the file
// HANGING is there.
#include <libgen.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

int main(int count, char** arguments) {
    char path[4096];
    (void)count;
    if (access(getenv("HANGING"), F_OK) == 0)
        return (int)sleep(40);
    snprintf(path, sizeof path, "%s/%s", getenv("REAL_TOOLS"), basename(arguments[0]));
    execv(path, arguments);
    return 1;
}
