#pragma once

#include "presentation/rows/tone.h"

#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// A figure that is read from afar, with its title and what explains it.
struct FigureTile {
    std::string title;
    /// Empty for none.
    std::string symbolName;
    std::string value;
    Tone valueColor = Tone::Primary;
    /// Smaller lines below the value.
    std::vector<std::string> captions;
    /// Sets the tile apart from its neighbours.
    std::optional<Tone> accentColor;
    /// The title for assistive programs, where it says too little by itself.
    std::string spokenTitle;

    bool operator==(const FigureTile&) const = default;
};

} // namespace tolvo
