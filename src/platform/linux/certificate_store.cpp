#include "platform/linux/certificate_store.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>

namespace tolvo {

namespace {

constexpr std::array bundleFiles{
    "/etc/ssl/certs/ca-certificates.crt",                // Debian, Ubuntu, Arch, Gentoo
    "/etc/pki/ca-trust/extracted/pem/tls-ca-bundle.pem", // Fedora, RHEL
    "/etc/pki/tls/certs/ca-bundle.crt",                  // Fedora, RHEL, older
    "/etc/ssl/ca-bundle.pem",                            // openSUSE, SLES
    "/var/lib/ca-certificates/ca-bundle.pem",            // openSUSE, SLES
    "/etc/ssl/cert.pem",                                 // Alpine
};

std::string environmentText(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

bool isReadable(const char* path) {
    return ::access(path, R_OK) == 0;
}

} // namespace

CertificateStore CertificateStore::ofSystem() {
    CertificateStore store{environmentText("SSL_CERT_FILE"), environmentText("SSL_CERT_DIR")};
    // A bundle beside single files is made of them, and one file is read once where a directory bars the keeping.
    if (std::filesystem::path(store.bundleFile).parent_path() == store.directory)
        store.directory.clear();
    if (!store.bundleFile.empty() || !store.directory.empty())
        return store;
    if (const auto found = std::ranges::find_if(bundleFiles, isReadable); found != bundleFiles.end())
        store.bundleFile = *found;
    else
        store.directory = "/etc/ssl/certs";
    return store;
}

} // namespace tolvo
