#pragma once

namespace tolvo {

/// The program's presence before its user: a status item on a desktop, a screen in a terminal. Main thread only.
class FrontEnd {
public:
    FrontEnd(const FrontEnd&) = delete;
    FrontEnd& operator=(const FrontEnd&) = delete;
    virtual ~FrontEnd() = default;

    virtual void install() = 0;
    virtual void remove() = 0;

protected:
    FrontEnd() = default;
};

} // namespace tolvo
