// Entry of every C++ test: a Qt event loop is there, and an unexpected warning fails the test.
#ifdef TAVRIN_TEST_WIDGETS
#include <QApplication>
using Application = QApplication;
#elif defined(TAVRIN_TEST_VIEWS)
#include <QGuiApplication>
#include <QQuickWindow>
using Application = QGuiApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif
#include <gmock/gmock.h>

#include <cstdio>

namespace {

bool isExpected(const QString& message)
{
    // The plugin without a display has no stacking order.
    return message == QStringLiteral("This plugin does not support raise()");
}

void failOnWarning(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (isExpected(message))
        return;
    std::fprintf(stderr, "%s\n", qPrintable(message));
    if (type == QtWarningMsg || type == QtCriticalMsg)
        ADD_FAILURE() << "unexpected warning: " << qPrintable(message);
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
#ifdef TAVRIN_TEST_VIEWS
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
#endif
    Application application(argc, argv);
    qInstallMessageHandler(failOnWarning);
    return RUN_ALL_TESTS();
}
