#pragma once

#include "platform/services/clipboard.h"

namespace tolvo {

/// Over QClipboard.
class QtClipboard final : public Clipboard {
public:
    bool setText(const std::string& text) override;
};

} // namespace tolvo
