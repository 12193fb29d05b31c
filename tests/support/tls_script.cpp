#include "tests/support/tls_script.h"

#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>
#include <unistd.h>

#include <array>

namespace tolvo::testing {

namespace {

std::unique_ptr<X509, decltype(&X509_free)> makeCertificate(EVP_PKEY* key) {
    std::unique_ptr<X509, decltype(&X509_free)> certificate(X509_new(), X509_free);
    X509_set_version(certificate.get(), X509_VERSION_3);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 3600);
    X509_set_pubkey(certificate.get(), key);
    X509_NAME* const name = X509_get_subject_name(certificate.get());
    const std::array<unsigned char, 5> text{'t', 'e', 's', 't', 0};
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, text.data(), 4, -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    X509_EXTENSION* const names = X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, "IP:127.0.0.1");
    X509_add_ext(certificate.get(), names, -1);
    X509_EXTENSION_free(names);
    X509_sign(certificate.get(), key, EVP_sha256());
    return certificate;
}

} // namespace

SelfSignedCertificate::SelfSignedCertificate() : context_(SSL_CTX_new(TLS_server_method()), SSL_CTX_free) {
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(EVP_EC_gen("P-256"), EVP_PKEY_free);
    const auto certificate = makeCertificate(key.get());
    SSL_CTX_use_PrivateKey(context_.get(), key.get());
    SSL_CTX_use_certificate(context_.get(), certificate.get());
    std::string path = "/tmp/tolvo-test-XXXXXX";
    FILE* const file = ::fdopen(::mkstemp(path.data()), "w");
    PEM_write_X509(file, certificate.get());
    std::fclose(file);
    file_ = path;
}

SelfSignedCertificate::~SelfSignedCertificate() {
    ::unlink(file_.c_str());
}

HostileServer::Script SelfSignedCertificate::answerOverTLS(std::string answer) const {
    return [context = context_, answer = std::move(answer)](Peer& peer) {
        const std::unique_ptr<SSL, decltype(&SSL_free)> connection(SSL_new(context.get()), SSL_free);
        SSL_set_fd(connection.get(), peer.descriptor());
        std::array<char, 4096> request{};
        if (SSL_accept(connection.get()) == 1 && SSL_read(connection.get(), request.data(), request.size()) > 0) {
            SSL_write(connection.get(), answer.data(), static_cast<int>(answer.size()));
            SSL_shutdown(connection.get());
        }
    };
}

} // namespace tolvo::testing
