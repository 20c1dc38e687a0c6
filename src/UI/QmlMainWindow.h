#pragma once

#include "Core/Shell/MainWindow.h"
#include "UI/ContentModel.h"

#include <QQuickView>
#include <QTimer>

namespace Tavrin {

class Theme;

/// The main window: a Qt Quick view drawn by the software renderer, which needs a third of the memory of
/// a graphics driver and is on screen sooner. Main thread.
class QmlMainWindow : public QQuickView, public MainWindow {
    Q_OBJECT

public:
    explicit QmlMainWindow(const MainWindowServices& services);
    ~QmlMainWindow() override;

    void show(const ActivationContext& context) override;
    void hide() override;
    bool isVisible() const override;
    void rest() override;

protected:
    bool event(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void followAppearance();
    void followScreen();
    Theme& theme();
    void restoreFrame();
    void keepFrame();

    MainWindowServices m_services;
    ContentModel m_content;
    QTimer m_frameTimer;
};

} // namespace Tavrin
