// The static libdbus asks libsystemd for listening sockets in its server half, and libsystemd has no static library.
// A program that only calls others never gets there; for one that did, these answers are true: no socket was passed on.

extern "C" {
int sd_listen_fds(int unsetEnvironment);
int sd_is_socket(int descriptor, int family, int type, int listening);

int sd_listen_fds(int) {
    return 0;
}

int sd_is_socket(int, int, int, int) {
    return 0;
}
}
