#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace tolvo {

/// Our texts are UTF-8.
inline QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace tolvo
