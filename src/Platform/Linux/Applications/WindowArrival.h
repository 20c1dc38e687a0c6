#pragma once

#include "Platform/Linux/Applications/XcbSession.h"

namespace Tavrin {

/// The first window of an application that is about to be launched. Most window managers put it in front
/// because of the startup id; some are set not to, and some programs know no startup ids. Then it comes
/// forward all the same, unless the user has turned to something else meanwhile.
class WindowArrival {
public:
    /// Made before the launch. `serverTime` is the time of the press in milliseconds, 0 if unknown.
    explicit WindowArrival(std::uint32_t serverTime);

    /// The time of the press, or that of now where it is unknown; 0 without an X server.
    std::uint32_t pressTime() const { return m_pressTime; }

    /// Waits until the application has a window, as long as `goesOn`, which is asked several times a
    /// second. 0 if none came.
    std::uint32_t await(const ApplicationIdentity& identity, const std::function<bool()>& goesOn);

    /// Sees to it that the window is in front.
    void bringForward(std::uint32_t window);

private:
    bool userStayed();

    XcbSession m_session;
    std::uint32_t m_pressTime;
    /// Where the user was.
    std::uint32_t m_activeBefore;
};

} // namespace Tavrin
