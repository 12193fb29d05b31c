#pragma once

#include "tests/support/hostile_server.h"

#include <memory>
#include <string>

struct ssl_ctx_st;

namespace tolvo::testing {

/// A certificate for 127.0.0.1 that only those trust who are given its file.
class SelfSignedCertificate {
public:
    SelfSignedCertificate();
    SelfSignedCertificate(const SelfSignedCertificate&) = delete;
    SelfSignedCertificate& operator=(const SelfSignedCertificate&) = delete;
    ~SelfSignedCertificate();

    const std::string& file() const { return file_; }
    /// Shakes hands, reads one request and sends the answer.
    HostileServer::Script answerOverTLS(std::string answer) const;

private:
    std::string file_;
    std::shared_ptr<ssl_ctx_st> context_;
};

} // namespace tolvo::testing
