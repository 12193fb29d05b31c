#pragma once

#include <curl/curl.h>

#include <memory>

namespace tolvo {

template<auto cleanUp>
struct CurlCleanUp {
    template<class Handle>
    void operator()(Handle* handle) const {
        cleanUp(handle);
    }
};

using CurlEasyHandle = std::unique_ptr<CURL, CurlCleanUp<curl_easy_cleanup>>;
using CurlMultiHandle = std::unique_ptr<CURLM, CurlCleanUp<curl_multi_cleanup>>;
using CurlShareHandle = std::unique_ptr<CURLSH, CurlCleanUp<curl_share_cleanup>>;
using CurlList = std::unique_ptr<curl_slist, CurlCleanUp<curl_slist_free_all>>;

/// The library's process-wide part, which the library counts itself.
class CurlLibrary {
public:
    CurlLibrary() { curl_global_init(CURL_GLOBAL_DEFAULT); }
    CurlLibrary(const CurlLibrary&) = delete;
    CurlLibrary& operator=(const CurlLibrary&) = delete;
    ~CurlLibrary() { curl_global_cleanup(); }
};

} // namespace tolvo
