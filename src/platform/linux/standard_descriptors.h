#pragma once

namespace tolvo {

/// Opens those of the three standard descriptors that the program was started without, so that no file of its own gets
/// such a number and then what is meant for the terminal. Writing to one of them goes on to fail. Called before
/// anything else is opened.
void openStandardDescriptors();

} // namespace tolvo
