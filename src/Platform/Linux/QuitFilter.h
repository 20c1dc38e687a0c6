#pragma once

#include <QObject>
#include <functional>

namespace Tavrin {

/// Takes the toolkit's wish to quit, which comes when the session ends, before the windows are asked: ours
/// only ever hides, and the toolkit would take that for a refusal. Needs the application object.
class QuitFilter : public QObject {
    Q_OBJECT

public:
    explicit QuitFilter(std::function<void()> quit);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void()> m_quit;
};

} // namespace Tavrin
