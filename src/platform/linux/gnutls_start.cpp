// The library chose the name; the macro GNUTLS_SKIP_GLOBAL_INIT of its header defines the same.
// NOLINTBEGIN(bugprone-reserved-identifier)

/// libcurl comes with GnuTLS, for protocols that are switched off here (see CurlTransfer). When it is loaded it sets
/// itself up, which takes most of a megabyte, unless the program answers this question with 1.
extern "C" __attribute__((visibility("default"))) int _gnutls_global_init_skip();

int _gnutls_global_init_skip() {
    return 1;
}

// NOLINTEND(bugprone-reserved-identifier)
