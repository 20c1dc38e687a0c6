#include "UI/QmlMainWindow.h"

#include "Core/Shell/Appearance.h"
#include "Core/Storage/AppSettings.h"
#include "UI/Design/Theme.h"
#include "UI/Picker/ApplicationIconProvider.h"
#include "UI/Symbols/SymbolProvider.h"
#include "UI/WindowFrame.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QQmlEngine>
#include <QScreen>

#include <chrono>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

constexpr QSize openingSize{720, 540};
constexpr QSize smallestSize{640, 480};

/// A window that is being dragged has its place written when it rests.
constexpr auto frameDelay = 500ms;

QList<QRect> usableScreens()
{
    QList<QRect> areas;
    for (const QScreen* screen : QGuiApplication::screens())
        areas.append(screen->availableGeometry());
    return areas;
}

} // namespace

QmlMainWindow::QmlMainWindow(const MainWindowServices& services)
    : m_services(services)
    , m_content(services)
{
    m_frameTimer.setSingleShot(true);
    m_frameTimer.setInterval(frameDelay);
    connect(&m_frameTimer, &QTimer::timeout, this, &QmlMainWindow::keepFrame);
    connect(this, &QWindow::visibleChanged, &m_content, &ContentModel::setOnScreen);

    // Some input methods are told only of changes, and went on with what stood before the cursor of the field
    // that was left: the first word in the next one was not put together.
    connect(qGuiApp, &QGuiApplication::focusObjectChanged, this, [](const QObject* object) {
        if (object)
            QGuiApplication::inputMethod()->update(
                Qt::ImSurroundingText | Qt::ImCursorPosition | Qt::ImAnchorPosition);
    });

    setTitle(QStringLiteral("Tavrin - Trình Quản Lý Phím Tắt Toàn Cục"));
    setMinimumSize(smallestSize);
    restoreFrame();
    setResizeMode(SizeRootObjectToView);
    engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine()->addImageProvider(QStringLiteral("symbol"), new SymbolProvider);
    engine()->addImageProvider(
        QLatin1String(applicationIconProviderName), new ApplicationIconProvider(services.applications));
    setInitialProperties({
        {QStringLiteral("content"), QVariant::fromValue(&m_content)},
    });
    setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tavrin/Views/ContentView.qml")));
    // The theme's type is known once a view has imported it, and nothing is drawn yet.
    connect(&services.appearance, &Appearance::isDarkChanged, this, &QmlMainWindow::followAppearance);
    followAppearance();
    connect(this, &QWindow::screenChanged, this, &QmlMainWindow::followScreen);
    followScreen();
}

QmlMainWindow::~QmlMainWindow()
{
    // The scene looks at the models to its end.
    setSource({});
}

void QmlMainWindow::show(const ActivationContext& context)
{
    if (!QQuickView::isVisible()) {
        m_services.shell.windowWillShow(winId());
        QQuickView::show();
    } else if (windowStates() & Qt::WindowMinimized) {
        setWindowStates(windowStates() & ~Qt::WindowMinimized);
    }
    raise();
    requestActivate();
    m_services.shell.activateWindow(winId(), context);
}

void QmlMainWindow::hide()
{
    keepFrame();
    QQuickView::hide();
}

bool QmlMainWindow::isVisible() const
{
    return QQuickView::isVisible();
}

void QmlMainWindow::rest()
{
    if (isVisible())
        return;
    releaseResources();
    engine()->trimComponentCache();
    engine()->collectGarbage();
}

bool QmlMainWindow::event(QEvent* event)
{
    // Asked before the toolkit acts: a close that is answered with no leaves the window as it is.
    if (event->type() == QEvent::Close && !m_services.windowShouldClose()) {
        event->ignore();
        return true;
    }
    return QQuickView::event(event);
}

void QmlMainWindow::moveEvent(QMoveEvent* event)
{
    QQuickView::moveEvent(event);
    m_frameTimer.start();
}

void QmlMainWindow::resizeEvent(QResizeEvent* event)
{
    QQuickView::resizeEvent(event);
    m_frameTimer.start();
}

void QmlMainWindow::followAppearance()
{
    theme().setDark(m_services.appearance.isDark());
    // What a window shows that has grown and has not been drawn yet.
    setColor(theme().window());
}

void QmlMainWindow::followScreen()
{
    theme().setPixelRatio(effectiveDevicePixelRatio());
}

Theme& QmlMainWindow::theme()
{
    return *engine()->singletonInstance<Theme*>(qmlTypeId("Tavrin", 1, 0, "Theme"));
}

void QmlMainWindow::restoreFrame()
{
    const QRect frame
        = windowFrame(frameFromText(m_services.settings.windowFrame()), openingSize, usableScreens());
    setGeometry(frame);
}

void QmlMainWindow::keepFrame()
{
    m_frameTimer.stop();
    if (!isVisible() || windowStates() != Qt::WindowNoState)
        return;
    const QString frame = frameText(geometry());
    if (frame != m_services.settings.windowFrame())
        m_services.settings.setWindowFrame(frame);
}

} // namespace Tavrin
