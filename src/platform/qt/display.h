#pragma once

namespace tolvo {

/// Whether there is a display to draw on. The toolkit itself ends the program with a core dump when there is none.
/// Before the application object is made.
bool hasDisplay();

} // namespace tolvo
