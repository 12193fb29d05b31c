#include "platform/linux/standard_descriptors.h"

#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>

namespace tolvo {

void openStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // open() takes the lowest free number, which is this one. One that is for reading refuses to be written to.
        if (::fcntl(descriptor, F_GETFD) < 0)
            ::open("/dev/null", O_RDONLY);
    }
}

} // namespace tolvo
