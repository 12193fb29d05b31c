// A program that does what the test tells it: prints what it was given, or misbehaves. It uses the C library only, so
// that it starts fast, also ten thousand times.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// What must not come from the parent: descriptors beyond the three, signals that are ignored or blocked, a locale.
void printInheritance() {
    for (int descriptor = 3; descriptor < 256; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) >= 0)
            std::printf("descriptor %d\n", descriptor);
    }
    sigset_t blocked;
    sigprocmask(SIG_BLOCK, nullptr, &blocked);
    for (int number = 1; number < 32; ++number) {
        struct sigaction action;
        if (sigaction(number, nullptr, &action) == 0 && (action.sa_handler == SIG_IGN || sigismember(&blocked, number)))
            std::printf("signal %d\n", number);
    }
    std::printf("%s %s", std::getenv("LC_ALL"), std::getenv("TOLVO_TEST"));
}

} // namespace

int main(int count, char** arguments) {
    const char* mode = count > 1 ? arguments[1] : "";
    const int value = count > 2 ? std::atoi(arguments[2]) : 0;
    const auto is = [mode](const char* name) { return std::strcmp(mode, name) == 0; };
    if (is("arguments"))
        for (int i = 2; i < count; ++i)
            std::printf("[%s]", arguments[i]);
    else if (is("inheritance"))
        printInheritance();
    else if (is("exit"))
        std::printf("statistics"), std::fprintf(stderr, "warning"), std::exit(value);
    else if (is("signal"))
        raise(value);
    else if (is("invalid"))
        std::printf("fine"), std::fprintf(stderr, "\xff"), std::exit(value);
    else if (is("bytes"))
        for (int i = 0; i < value; ++i)
            std::putchar('x');
    else if (is("orphan") && fork() == 0)
        sleep(2);
    else if (is("stubborn"))
        signal(SIGTERM, SIG_IGN), alarm(1), pause();
    else if (is("wait"))
        alarm(20), pause();
    return 0;
}
