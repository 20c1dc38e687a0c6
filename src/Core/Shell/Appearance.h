#pragma once

#include <QObject>
#include <utility>

namespace Tavrin {

/// Whether the desktop wants its windows dark. Main thread.
class Appearance : public QObject {
    Q_OBJECT

public:
    /// Begins to ask the desktop and to follow it; once, before a window is built. What is not answered by
    /// the time of the first frame comes with isDarkChanged().
    virtual void start() = 0;

    /// Light until the desktop has said otherwise.
    bool isDark() const { return m_isDark; }

Q_SIGNALS:
    void isDarkChanged();

protected:
    void setDark(bool isDark)
    {
        if (std::exchange(m_isDark, isDark) != isDark)
            Q_EMIT isDarkChanged();
    }

private:
    bool m_isDark = false;
};

} // namespace Tavrin
