#pragma once

#include "integration/url_opening.h"

#include <string>
#include <vector>

namespace tolvo::testing {

/// Opens only the URL with this text; none when it is empty.
class ScriptedURLOpener final : public URLOpening {
public:
    bool open(const URL& url) override {
        tried.push_back(url.text());
        return url.text() == openable;
    }

    std::string openable;
    std::vector<std::string> tried;
};

} // namespace tolvo::testing
